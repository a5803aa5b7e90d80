using System;
using System.Collections.Generic;
using System.IO;
using System.Runtime.Serialization;
using System.Runtime.Serialization.Json;
using System.Text;

namespace Dialwright
{
    /// <summary>How <see cref="Runner.Run"/> is to work.</summary>
    public sealed class RunOptions
    {
        /// <summary>Options that change nothing.</summary>
        public RunOptions()
        {
            Tool = new[] { "dialwright.exe" };
            Variables = new Dictionary<string, string>();
            More = new string[0];
        }

        /// <summary>The path of dialwright.exe, or several words that begin a command line.</summary>
        public string[] Tool { get; set; }

        /// <summary>A file with lines NAME=VALUE, for <see cref="Secret.FromFile"/>.</summary>
        public string SecretFile { get; set; }

        /// <summary>Added to the environment of dialwright.exe, for <see cref="Secret.FromEnvironment"/>.</summary>
        public IDictionary<string, string> Variables { get; private set; }

        /// <summary>More options of "dialwright run".</summary>
        public string[] More { get; set; }
    }

    /// <summary>
    /// Scripts carried out by dialwright.exe, in another process: it says why a line failed, and survives targets that
    /// hang.
    /// </summary>
    public static class Runner
    {
        /// <summary>Carries out lines, and tells how each went. Blocks until it is done.</summary>
        /// <exception cref="LineFailedException">The first line that failed.</exception>
        /// <exception cref="RunException">Nothing was carried out.</exception>
        public static IList<Row> Run(IEnumerable<string> lines, RunOptions options)
        {
            var words = new List<string>();
            if (options.SecretFile != null) words.AddRange(new[] { "--secret-file", options.SecretFile });
            words.AddRange(options.More);
            ToolProcess ended = ToolProcess.Run(string.Join("\n", lines), options.Tool, words, options.Variables);
            string said = ended.Said.Length > 0 ? ended.Said : "dialwright run ended with " + ended.ExitCode;
            if (ended.Output.Length == 0) throw new RunException(said, ended.ExitCode, new Row[0]);
            List<Row> rows = RowsOf(ended.Output);
            Row failed = rows.Find(row => row.Status == "failed");
            if (failed != null) throw new LineFailedException(failed, ended.ExitCode, rows);
            if (ended.ExitCode != 0) throw new RunException(said, ended.ExitCode, rows);
            return rows;
        }

        private static List<Row> RowsOf(string json)
        {
            var serializer = new DataContractJsonSerializer(typeof(Report));
            Report report;
            using (var stream = new MemoryStream(Encoding.UTF8.GetBytes(json)))
                report = (Report)serializer.ReadObject(stream);
            var rows = new List<Row>();
            foreach (ReportFile file in report.Files) rows.AddRange(file.Lines);
            return rows;
        }
    }

    [DataContract]
    internal sealed class Report
    {
        [DataMember(Name = "files")]
        public ReportFile[] Files { get; set; }
    }

    [DataContract]
    internal sealed class ReportFile
    {
        [DataMember(Name = "lines")]
        public Row[] Lines { get; set; }
    }

    /// <summary>How a line went.</summary>
    [DataContract]
    public sealed class Row
    {
        /// <summary>Its number in the script, from 1.</summary>
        [DataMember(Name = "line")]
        public int Line { get; private set; }

        /// <summary>The line with its typed text masked.</summary>
        [DataMember(Name = "text")]
        public string Text { get; private set; }

        /// <summary>ok, failed, skipped or planned.</summary>
        [DataMember(Name = "status")]
        public string Status { get; private set; }

        /// <summary>How long it took.</summary>
        [DataMember(Name = "milliseconds")]
        public double Milliseconds { get; private set; }

        /// <summary>Such as the dialog that the line opened.</summary>
        [DataMember(Name = "note")]
        public string Note { get; private set; }

        /// <summary>Why it failed; stays the same from version to version.</summary>
        [DataMember(Name = "code")]
        public string Code { get; private set; }

        /// <summary>The same in words.</summary>
        [DataMember(Name = "reason")]
        public string Reason { get; private set; }

        /// <summary>What could help; may be empty.</summary>
        [DataMember(Name = "suggestion")]
        public string Suggestion { get; private set; }

        /// <summary>What the library said.</summary>
        [DataMember(Name = "messages")]
        public string[] Messages { get; private set; }
    }

    /// <summary>"dialwright run" did not do what it should.</summary>
    public class RunException : Exception
    {
        /// <summary>Made by <see cref="Runner.Run"/>.</summary>
        public RunException(string message, int exitCode, IList<Row> rows)
            : base(message)
        {
            ExitCode = exitCode;
            Rows = rows;
        }

        /// <summary>The exit code of dialwright.exe.</summary>
        public int ExitCode { get; private set; }

        /// <summary>How each line went; empty where nothing is known.</summary>
        public IList<Row> Rows { get; private set; }
    }

    /// <summary>A line failed.</summary>
    public sealed class LineFailedException : RunException
    {
        /// <summary>Made by <see cref="Runner.Run"/>.</summary>
        public LineFailedException(Row row, int exitCode, IList<Row> rows)
            : base(string.Format("{0}: {1} (line {2}: {3})", row.Code, row.Reason, row.Line, row.Text), exitCode, rows)
        {
            Row = row;
        }

        /// <summary>The line, with code, reason and suggestion.</summary>
        public Row Row { get; private set; }
    }
}
