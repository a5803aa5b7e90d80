using System.Collections.Generic;
using System.Text.RegularExpressions;

namespace Dialwright
{
    /// <summary>Hides what lines type.</summary>
    public static class Mask
    {
        private const string Hidden = "*****";
        private const int LeastHiddenLength = 4;

        // As the library reads a line: what is white space to it is ASCII.
        private static readonly Regex Token =
            new Regex(@"""((?:[^""\\]|\\[^\r\n\u2028\u2029])*)""|([^ \t\n\v\f\r]+)", RegexOptions.CultureInvariant);

        /// <summary>
        /// The same lines with ***** for typed texts, and for all that stands in a line that is no valid command.
        /// </summary>
        public static string Script(string script)
        {
            string[] lines = script.Split('\n');
            for (int i = 0; i < lines.Length; i++) lines[i] = Line(lines[i]);
            return string.Join("\n", lines);
        }

        /// <summary>
        /// The messages with ***** wherever they hold a typed text of the script; one below four characters stays.
        /// </summary>
        public static IList<string> Messages(string script, IEnumerable<string> messages)
        {
            List<string> texts = TypedTexts(script);
            var shown = new List<string>();
            foreach (string message in messages)
            {
                string hidden = message;
                foreach (string text in texts) hidden = hidden.Replace(text, Hidden);
                shown.Add(hidden);
            }
            return shown;
        }

        /// <summary>The texts themselves, and as they are written between quotes; the longest first.</summary>
        private static List<string> TypedTexts(string script)
        {
            var texts = new List<string>();
            foreach (string line in script.Split('\n'))
            {
                foreach (Match token in HiddenTokens(line))
                {
                    texts.Add(TextOf(token));
                    texts.Add(token.Value.Trim('"'));
                }
            }
            texts.RemoveAll(text => text.Length < LeastHiddenLength);
            texts.Sort((one, other) => other.Length.CompareTo(one.Length));
            return texts;
        }

        private static string Line(string line)
        {
            List<Match> hidden = HiddenTokens(line);
            for (int i = hidden.Count - 1; i >= 0; i--)
            {
                Match token = hidden[i];
                line = line.Remove(token.Index, token.Length).Insert(token.Index, "\"" + Hidden + "\"");
            }
            return line;
        }

        private static List<Match> HiddenTokens(string line)
        {
            var tokens = new List<Match>();
            foreach (Match token in Token.Matches(line)) tokens.Add(token);
            if (tokens.Count == 0) return tokens;
            string name = Command.WithoutSuffix(TextOf(tokens[0]));
            int behindTitle = tokens.Count - 3;
            int count;
            bool isKnown = Command.ArgumentCounts.TryGetValue(name, out count);
            if (!isKnown || (behindTitle != count && behindTitle != count + 1))
                return tokens.GetRange(1, tokens.Count - 1);
            return Command.TypesText(name) ? tokens.GetRange(2 + count, 1) : new List<Match>();
        }

        private static string TextOf(Match token)
        {
            Group inside = token.Groups[1];
            return inside.Success ? Regex.Replace(inside.Value, @"\\([""\\])", "$1") : token.Value;
        }
    }
}
