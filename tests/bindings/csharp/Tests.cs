using System;
using System.Collections.Generic;
using System.IO;
using System.Xml;
using Dialwright;

/// <summary>Tests of the C# binding as far as it runs anywhere; the calls of the library want Windows.</summary>
internal static class Tests
{
    private static int failures;

    /// <param name="arguments">lines.json, a folder with a real host and its error file, and the tool.</param>
    private static int Main(string[] arguments)
    {
        var table = new Table(arguments[0]);
        TheBindingHasTheCommandsOfTheTable(table);
        EachLineIsWrittenAsItShouldBe(table);
        PatternsMatchOneText(table);
        MasksHideWhatWasTyped(table);
        MessagesLoseWhatWasTyped();
        OnlyWhatAProcessAndThreadAddedIsTold(arguments[1], int.Parse(arguments[2]), int.Parse(arguments[3]));
        AFileThatWasBegunAnewIsReadFromItsStart();
        TheLibraryIsTheOneForTheProcessor();
        string[] tool = new List<string>(arguments).GetRange(4, arguments.Length - 4).ToArray();
        TheRunnerSaysWhyALineFailed(tool);
        TheRunnerTakesVariablesAndOptions(tool);
        WhatIsNotBegunIsAnError(tool);
        return failures == 0 ? 0 : 1;
    }

    private static void Check(bool isRight, string what)
    {
        if (isRight) return;
        failures++;
        Console.WriteLine("not so: " + what);
    }

    private static void CheckSame(string expected, string actual, string what)
    {
        Check(expected == actual, string.Format("{0}\n    expected {1}\n    actual   {2}", what, expected, actual));
    }

    private static void TheBindingHasTheCommandsOfTheTable(Table table)
    {
        Check(table.Commands.Count == Command.ArgumentCounts.Count, "as many commands as in the table");
        foreach (KeyValuePair<string, int> pair in table.Commands)
        {
            int count;
            Check(Command.ArgumentCounts.TryGetValue(pair.Key, out count) && count == pair.Value, pair.Key);
        }
    }

    private static void EachLineIsWrittenAsItShouldBe(Table table)
    {
        foreach (XmlElement row in table.Rows("lines"))
        {
            string refused = Table.Field(row, "refused");
            string name = Table.Field(row, "name");
            string written;
            try
            {
                written = Table.Write(row);
            }
            catch (ArgumentException error)
            {
                Check(refused != null && error.Message.Contains(refused), name + ": " + error.Message);
                continue;
            }
            catch (OverflowException)
            {
                // A timeout that the type of the property cannot hold.
                Check(refused != null && refused.Contains("2147483647"), name);
                continue;
            }
            CheckSame(Table.Field(row, "line"), written, name);
        }
    }

    private static void PatternsMatchOneText(Table table)
    {
        foreach (XmlElement row in table.Rows("patterns"))
            CheckSame(Table.Field(row, "pattern"), Command.Literal(Table.Field(row, "text")), "pattern");
    }

    private static void MasksHideWhatWasTyped(Table table)
    {
        foreach (XmlElement row in table.Rows("masked"))
            CheckSame(Table.Field(row, "masked"), Mask.Script(Table.Field(row, "line")), "mask");
    }

    private static void MessagesLoseWhatWasTyped()
    {
        const string Script =
            "Window.Close c t 5\n Window.SetText c t 1 \"a \\\"quoted\\\" word\" 5\nWindow.SetText c t 1 abc 5";
        var messages = new[] { "Invalid: a \"quoted\" word", "as written: a \\\"quoted\\\" word", "abc" };
        string shown = string.Join("|", Mask.Messages(Script, messages));
        CheckSame("Invalid: *****|as written: *****|abc", shown, "messages");
    }

    private static void OnlyWhatAProcessAndThreadAddedIsTold(string host, int process, int thread)
    {
        var log = new ErrorLog(host, process);
        var nothing = new Dictionary<string, long>();
        IList<string> lines = log.LinesSince(nothing, thread);
        Check(lines.Count == 3, "three lines of a real host, not " + lines.Count);
        CheckSame("DialogScriptManager::ExecuteScript: Invalid command: Window.Close \"No\" \"日本 😀\" 20",
            lines[lines.Count - 1], "the last line of a real host");
        Check(log.LinesSince(nothing, thread + 1).Count == 0, "nothing of another thread");
        Check(new ErrorLog(host, process + 1).LinesSince(nothing, thread).Count == 0, "nothing of another process");
        Check(log.LinesSince(log.Mark(), thread).Count == 0, "nothing from before");
        Check(new ErrorLog(host + "x", process).LinesSince(nothing, thread).Count == 0, "nothing of another host");
    }

    private static void AFileThatWasBegunAnewIsReadFromItsStart()
    {
        string folder = Path.Combine(Path.GetTempPath(), Path.GetRandomFileName());
        string trace = Directory.CreateDirectory(Path.Combine(folder, "logs", "trace")).FullName;
        string file = Path.Combine(trace, "x.exe_1_Dialwright_2_error.log");
        const string Prefix = "[2025-09-08 14:05:23.1234567 UTC+02:00] [7:9] [Dialwright  43   error] ";
        File.WriteAllText(file, Prefix + "F: an old and long message\r\n" + Prefix + "F: another\r\n");
        var log = new ErrorLog(Path.Combine(folder, "X.exe"), 7);
        IDictionary<string, long> mark = log.Mark();
        File.WriteAllText(file, Prefix + "F: new\n" + new string(' ', 80) + "goes on\r\n");
        CheckSame("F: new\ngoes on", string.Join("|", log.LinesSince(mark, 9)), "a file begun anew");
        Directory.Delete(folder, true);
        Check(log.LinesSince(mark, 9).Count == 0, "nothing where there is no folder");
    }

    private static void TheLibraryIsTheOneForTheProcessor()
    {
        string folder = Path.Combine(Path.GetTempPath(), Path.GetRandomFileName());
        string beside = Path.Combine(folder, "Dialwright.dll");
        CheckSame(beside, Library.FindFile(null, "x64", folder), "beside the program");
        string native = Directory.CreateDirectory(Path.Combine(folder, "runtimes", "win-arm64", "native")).FullName;
        string file = Path.Combine(native, "Dialwright.dll");
        File.WriteAllText(file, "");
        CheckSame(file, Library.FindFile("", "arm64", folder), "for ARM64");
        CheckSame(beside, Library.FindFile(null, "x64", folder), "not that of ARM64");
        Directory.Delete(folder, true);
        try
        {
            Library.FindFile(null, "x86", folder);
            Check(false, "32-bit processes are refused");
        }
        catch (PlatformNotSupportedException error)
        {
            Check(error.Message.Contains("this process is x86"), error.Message);
        }
    }

    private static void TheRunnerSaysWhyALineFailed(string[] tool)
    {
        var failing = new Command("Window.SetText", "NoSuchClass", "日本 😀", 1, "hunter22") { TimeoutMs = 20 };
        try
        {
            Runner.Run(new string[] { failing, failing }, new RunOptions { Tool = tool });
            Check(false, "the line fails");
        }
        catch (LineFailedException error)
        {
            CheckSame("window_not_found", error.Row.Code, "code");
            Check(error.Message.StartsWith("window_not_found: ") && error.Message.Contains("日本 😀"), error.Message);
            Check(!error.ToString().Contains("hunter22"), "the text is not told");
            Check(error.Rows.Count == 2 && error.Rows[1].Status == "skipped", "the second line is not run");
            Check(error.Row.Messages.Length > 1, "the library's messages are there");
        }
    }

    private static void TheRunnerTakesVariablesAndOptions(string[] tool)
    {
        var line = new Command("Window.SetText", "c", "t", 1, Secret.FromEnvironment("DIALWRIGHT_TEST_PIN"));
        var options = new RunOptions { Tool = tool, More = new[] { "--dry-run" } };
        options.Variables["DIALWRIGHT_TEST_PIN"] = "4711 ü";
        IList<Row> rows = Runner.Run(new string[] { line }, options);
        CheckSame("planned", rows[0].Status, "status");
        options.Variables.Clear();
        try
        {
            Runner.Run(new string[] { line }, options);
            Check(false, "a variable that is not there is an error");
        }
        catch (RunException error)
        {
            Check(error.Message.Contains("there is no value for ${env:DIALWRIGHT_TEST_PIN}"), error.Message);
        }
    }

    private static void WhatIsNotBegunIsAnError(string[] tool)
    {
        string odd = Path.Combine(Path.GetTempPath(), "no such \"secret\" file\\");
        try
        {
            Runner.Run(new[] { "Window.Clsoe c t 5" }, new RunOptions { Tool = tool });
            Check(false, "a wrong line is refused");
        }
        catch (RunException error)
        {
            Check(error.ExitCode == 2 && error.Message.Contains("DW102"), error.Message);
        }
        try
        {
            var launch = new[] { "--launch", "no-such-program.exe" };
            Runner.Run(new[] { "Window.Close c t 5" }, new RunOptions { Tool = tool, More = launch });
            Check(false, "a program that cannot be launched is an error");
        }
        catch (RunException error)
        {
            Check(error.ExitCode == 3 && error.Message.Contains("launch_failed"), error.Message);
        }
        try
        {
            Runner.Run(new[] { "Window.Close c t 5" }, new RunOptions { Tool = tool, SecretFile = odd });
            Check(false, "a secret file that is not there is refused");
        }
        catch (RunException error)
        {
            Check(error.Message.Contains(odd + " cannot be read"), error.Message);
        }
    }
}
