using System;
using System.Collections.Generic;
using System.IO;
using System.Text;
using System.Text.RegularExpressions;

namespace Dialwright
{
    /// <summary>What the library wrote into the error files of one host, and of one of its processes.</summary>
    public sealed class ErrorLog
    {
        private static readonly Regex Record = new Regex(
            @"\A\[[^\]]*\] \[(\d+):(\d+)\] \[Dialwright +\d+ +error\] (.*)\z", RegexOptions.Singleline);

        private static readonly string Continued = new string(' ', 80);

        private readonly string folder;
        private readonly Regex name;
        private readonly string process;

        /// <param name="host">The path of the host's program.</param>
        /// <param name="processId">The host's process.</param>
        public ErrorLog(string host, int processId)
        {
            folder = Path.Combine(Path.Combine(Path.GetDirectoryName(host), "logs"), "trace");
            // The number between the host's name and ours is the session.
            name = new Regex(
                @"\A" + Regex.Escape(Path.GetFileName(host)) + @"_\d+_Dialwright_[12]_error\.log\z",
                RegexOptions.IgnoreCase | RegexOptions.CultureInvariant);
            process = processId.ToString();
        }

        /// <summary>How far the files go now; for <see cref="LinesSince"/>.</summary>
        public IDictionary<string, long> Mark()
        {
            var sizes = new Dictionary<string, long>();
            foreach (string file in Files())
            {
                try
                {
                    sizes[file] = new FileInfo(file).Length;
                }
                catch (IOException)
                {
                }
            }
            return sizes;
        }

        /// <summary>The messages that this thread has added. Empty where nothing can be read.</summary>
        public IList<string> LinesSince(IDictionary<string, long> mark, int threadId)
        {
            var lines = new List<string>();
            foreach (string file in Files())
            {
                long offset;
                mark.TryGetValue(file, out offset);
                AddMessages(lines, ReadFrom(file, offset), threadId.ToString());
            }
            return lines;
        }

        private List<string> Files()
        {
            var files = new List<string>();
            try
            {
                foreach (string file in Directory.GetFiles(folder))
                    if (name.IsMatch(Path.GetFileName(file))) files.Add(file);
            }
            catch (IOException)
            {
            }
            catch (UnauthorizedAccessException)
            {
            }
            files.Sort(StringComparer.Ordinal);
            return files;
        }

        private static string ReadFrom(string file, long offset)
        {
            try
            {
                const FileShare All = FileShare.ReadWrite | FileShare.Delete;
                using (var stream = new FileStream(file, FileMode.Open, FileAccess.Read, All))
                {
                    // A file that became shorter was begun anew.
                    stream.Position = offset <= stream.Length ? offset : 0;
                    return new StreamReader(stream, new UTF8Encoding(false)).ReadToEnd();
                }
            }
            catch (IOException)
            {
            }
            catch (UnauthorizedAccessException)
            {
            }
            return "";
        }

        private void AddMessages(List<string> lines, string content, string thread)
        {
            var records = new List<string>();
            foreach (string piece in content.Split(new[] { "\r\n" }, StringSplitOptions.None))
            {
                if (records.Count > 0 && piece.StartsWith(Continued, StringComparison.Ordinal))
                    records[records.Count - 1] += "\n" + piece;
                else
                    records.Add(piece);
            }
            foreach (string record in records)
            {
                Match match = Record.Match(record);
                if (match.Groups[1].Value == process && match.Groups[2].Value == thread)
                    lines.Add(match.Groups[3].Value.Replace("\n" + Continued, "\n"));
            }
        }
    }
}
