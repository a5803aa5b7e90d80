// Not run: the calls want .NET on Windows. What they rest on is tested with Mono: lines, masks, error files.

using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.IO;

namespace Dialwright
{
    /// <summary>
    /// Dialwright.dll within this process. It is loaded once, by its full path, and kept. Every call blocks its thread:
    /// none belongs on the thread of a user interface.
    /// </summary>
    public static class Library
    {
        private static readonly object Gate = new object();
        private static bool isLoaded;

        /// <summary>
        /// Loads the library, at the first call only; the others here do so by themselves. Without a path: the one that
        /// DIALWRIGHT_LIBRARY names, else the one in runtimes\win-x64\native or runtimes\win-arm64\native beside the
        /// program, else the one beside the program.
        /// </summary>
        public static void Load(string file = null)
        {
            lock (Gate)
            {
                if (isLoaded) return;
                string path = FindFile(file, Architecture(), AppDomain.CurrentDomain.BaseDirectory);
                try
                {
                    NativeMethods.Load(path);
                }
                catch (BadImageFormatException error)
                {
                    string process = Architecture() + " (error 193)";
                    throw new BadImageFormatException(
                        path + " is for another processor than this process, " + process, error);
                }
                isLoaded = true;
            }
        }

        /// <summary>Whether the shape of a line is right. Touches no window.</summary>
        public static bool Validate(string line)
        {
            Load();
            return NativeMethods.ValidateCommand(Text(line)) == 1;
        }

        /// <summary>Whether the shape of every line is right. Touches no window.</summary>
        public static bool ValidateScript(string script)
        {
            Load();
            return NativeMethods.ValidateScript(Text(script)) == 1;
        }

        /// <summary>Carries out one line.</summary>
        /// <exception cref="DialwrightException">The line failed.</exception>
        public static void Execute(string line)
        {
            Text(line);
            Call(Mask.Script(line), line, () => NativeMethods.ExecuteCommand(line));
        }

        /// <summary>Carries out a script, up to the first line that fails.</summary>
        /// <exception cref="DialwrightException">A line failed.</exception>
        public static void ExecuteScript(string script)
        {
            Text(script);
            Call(Mask.Script(script), script, () => NativeMethods.ExecuteScript(script));
        }

        /// <summary>Starts a program, without waiting for it.</summary>
        /// <returns>Its process ID.</returns>
        /// <exception cref="DialwrightException">It cannot be started.</exception>
        public static int Launch(string program, string arguments = "")
        {
            Text(program);
            Text(arguments);
            uint processId = 0;
            Call(program, "", () => NativeMethods.ProgramLaunch(program, arguments, out processId));
            return (int)processId;
        }

        internal static string FindFile(string named, string architecture, string folder)
        {
            if (string.IsNullOrEmpty(named)) named = Environment.GetEnvironmentVariable("DIALWRIGHT_LIBRARY");
            if (!string.IsNullOrEmpty(named)) return Path.GetFullPath(named);
            if (architecture != "x64" && architecture != "arm64")
                throw new PlatformNotSupportedException(
                    "Dialwright is for 64-bit Windows, x64 and ARM64; this process is " + architecture);
            string native = Path.Combine(folder, "runtimes", "win-" + architecture, "native", "Dialwright.dll");
            return File.Exists(native) ? native : Path.Combine(folder, "Dialwright.dll");
        }

        /// <summary>Of this process, not of the machine.</summary>
        private static string Architecture()
        {
            string name = Environment.GetEnvironmentVariable("PROCESSOR_ARCHITECTURE") ?? "unknown";
            return name == "AMD64" ? "x64" : name.ToLowerInvariant();
        }

        private static string Text(string text)
        {
            if (text == null) throw new ArgumentNullException("text");
            if (text.IndexOf('\0') < 0) return text;
            throw new ArgumentException("the text holds a zero character, at which the library stops reading");
        }

        private static void Call(string command, string script, Func<int> function)
        {
            Load();
            ErrorLog log;
            using (Process host = Process.GetCurrentProcess()) log = new ErrorLog(host.MainModule.FileName, host.Id);
            IDictionary<string, long> before = log.Mark();
            if (function() == 1) return;
            IList<string> lines = log.LinesSince(before, (int)NativeMethods.GetCurrentThreadId());
            throw new DialwrightException(command, Mask.Messages(script, lines));
        }
    }

    /// <summary>A call of the library has failed.</summary>
    public sealed class DialwrightException : Exception
    {
        /// <param name="command">The line or script, with its typed texts hidden.</param>
        /// <param name="lines">What the library wrote into its error file meanwhile.</param>
        public DialwrightException(string command, IList<string> lines)
            : base("failed: " + command + (lines.Count > 0 ? "\n    " : "") + string.Join("\n    ", lines))
        {
            Command = command;
            Lines = lines;
        }

        /// <summary>The line or script, with its typed texts hidden; of a launch the program alone.</summary>
        public string Command { get; private set; }

        /// <summary>What the library wrote into its error file meanwhile; empty where that cannot be read.</summary>
        public IList<string> Lines { get; private set; }
    }
}
