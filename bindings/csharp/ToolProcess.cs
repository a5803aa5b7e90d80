using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.IO;
using System.Text;
using System.Threading.Tasks;

namespace Dialwright
{
    /// <summary>One run of "dialwright run --json", with the script on its standard input.</summary>
    public sealed class ToolProcess
    {
        private ToolProcess()
        {
        }

        /// <summary>The exit code of dialwright.exe.</summary>
        public int ExitCode { get; private set; }

        /// <summary>What it wrote to standard output: JSON, or nothing.</summary>
        public string Output { get; private set; }

        /// <summary>What it said on standard error.</summary>
        public string Said { get; private set; }

        /// <summary>Runs a script, and waits.</summary>
        /// <param name="script">Its lines.</param>
        /// <param name="tool">The path of dialwright.exe, or several words that begin a command line.</param>
        /// <param name="options">Options of "dialwright run".</param>
        /// <param name="variables">Added to the environment; may be null.</param>
        public static ToolProcess Run(
            string script, IList<string> tool, IEnumerable<string> options, IDictionary<string, string> variables)
        {
            var words = new List<string>(tool);
            words.RemoveAt(0);
            words.AddRange(new[] { "run", "--json" });
            words.AddRange(options);
            words.Add("-");
            var start = new ProcessStartInfo(tool[0], string.Join(" ", words.ConvertAll(Quoted)))
            {
                UseShellExecute = false,
                CreateNoWindow = true,
                RedirectStandardInput = true,
                RedirectStandardOutput = true,
                RedirectStandardError = true,
                StandardOutputEncoding = Encoding.UTF8,
                StandardErrorEncoding = Encoding.UTF8,
            };
            if (variables != null)
                foreach (KeyValuePair<string, string> pair in variables)
                    start.EnvironmentVariables[pair.Key] = pair.Value;
            using (Process process = Process.Start(start)) return Finish(process, script);
        }

        private static ToolProcess Finish(Process process, string script)
        {
            Task<string> output = process.StandardOutput.ReadToEndAsync();
            Task<string> said = process.StandardError.ReadToEndAsync();
            byte[] bytes = new UTF8Encoding(false).GetBytes(script);
            try
            {
                process.StandardInput.BaseStream.Write(bytes, 0, bytes.Length);
                process.StandardInput.Close();
            }
            catch (IOException)
            {
                // A tool that refuses its options does not read; what it says then is the reason.
            }
            process.WaitForExit();
            return new ToolProcess { ExitCode = process.ExitCode, Output = output.Result, Said = said.Result.Trim() };
        }

        /// <summary>As programs of Windows take their command line apart.</summary>
        private static string Quoted(string word)
        {
            if (word.Length > 0 && word.IndexOfAny(new[] { ' ', '\t', '"' }) < 0) return word;
            var quoted = new StringBuilder("\"");
            int backslashes = 0;
            foreach (char unit in word)
            {
                // Backslashes count double in front of a quote, and nowhere else.
                if (unit == '"') quoted.Append('\\', backslashes + 1);
                backslashes = unit == '\\' ? backslashes + 1 : 0;
                quoted.Append(unit);
            }
            return quoted.Append('\\', backslashes).Append('"').ToString();
        }
    }
}
