// Starts the practice target, fills in its form, and shows why a line fails.
// Compiled here, not run: launching wants .NET on Windows.

using System;
using System.IO;
using Dialwright;

internal static class FillForm
{
    private const string Dialog = "#32770";

    /// <param name="arguments">The folder of Dialwright.dll, dialwright.exe and practice_target.exe.</param>
    private static void Main(string[] arguments)
    {
        string folder = Path.GetFullPath(arguments.Length > 0 ? arguments[0] : ".");
        string title = Command.Literal("Form (C#)");
        Library.Load(Path.Combine(folder, "Dialwright.dll"));
        Library.Launch("\"" + Path.Combine(folder, "practice_target.exe") + "\"", "--title \"Form (C#)\"");

        // Within this process.
        Library.Execute(new Command("Window.SetText", Dialog, title, 12, "Ada Lovelace") { TimeoutMs = 5000 });
        Library.Execute(new Command("Window.SetCheckbox", Dialog, title, 31, true) { TimeoutMs = 5000 });
        try
        {
            Library.Execute(new Command("Window.ClickButton", Dialog, title, 4711) { TimeoutMs = 1000 });
        }
        catch (DialwrightException error)
        {
            Console.Error.WriteLine(error.Message);
        }

        // By dialwright.exe: it keeps secrets, and says why a line failed.
        var options = new RunOptions { Tool = new[] { Path.Combine(folder, "dialwright.exe") } };
        options.Variables["FORM_PASSWORD"] = "correct horse";
        var password = new Command("Window.SetText", Dialog, title, 14, Secret.FromEnvironment("FORM_PASSWORD"));
        var wrong = new Command("Window.ClickButton", Dialog, title, 4711) { TimeoutMs = 1000 };
        try
        {
            Runner.Run(new string[] { password, wrong }, options);
        }
        catch (LineFailedException error)
        {
            Console.Error.WriteLine("{0}\n    {1}", error.Message, error.Row.Suggestion);
        }
        Library.Execute(new Command("Window.Close", Dialog, title));
    }
}
