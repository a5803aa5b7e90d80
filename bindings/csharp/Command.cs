using System;
using System.Collections;
using System.Collections.Generic;
using System.Globalization;
using System.Text.RegularExpressions;

namespace Dialwright
{
    /// <summary>
    /// One line of the command language. <see cref="ToString"/> writes it, and throws <see cref="ArgumentException"/>
    /// for what cannot be written.
    /// </summary>
    /// <example>new Command("Window.SetText", "#32770", "Sign in", 1001, text) { TimeoutMs = 5000 }</example>
    public sealed class Command
    {
        /// <summary>How long a command waits where nothing else is said.</summary>
        public const int DefaultTimeoutMs = 10000;

        /// <summary>Each command, with the number of its arguments behind class and title.</summary>
        public static readonly IDictionary<string, int> ArgumentCounts = new Dictionary<string, int>
        {
            { "Window.SetText", 2 },
            { "Window.SetText.Path", 2 },
            { "Window.SetText.Position", 3 },
            { "Window.ClickButton", 1 },
            { "Window.ClickButton.Path", 1 },
            { "Window.ClickButton.Position", 2 },
            { "Window.SelectDropdown.Value", 2 },
            { "Window.SelectDropdown.Index", 2 },
            { "Window.SelectDropdown.ByPath.Value", 2 },
            { "Window.SelectDropdown.ByPath.Index", 2 },
            { "Window.SelectDropdown.ByPosition.Value", 3 },
            { "Window.SelectDropdown.ByPosition.Index", 3 },
            { "Window.ClearText", 1 },
            { "Window.ClearText.Path", 1 },
            { "Window.ClearText.Position", 2 },
            { "Window.Move", 2 },
            { "Window.BringToFront", 0 },
            { "Window.Minimize", 0 },
            { "Window.Maximize", 0 },
            { "Window.Restore", 0 },
            { "Window.Close", 0 },
            { "Window.SelectRadio", 1 },
            { "Window.SelectRadio.ByPath", 1 },
            { "Window.SelectRadio.ByPosition", 2 },
            { "Window.SetCheckbox", 2 },
            { "Window.SetCheckbox.ByPath", 2 },
            { "Window.SetCheckbox.ByPosition", 3 },
        };

        private const string Suffix = ".NonRegex";
        private const string TextCommand = "Window.SetText";

        private readonly string name;
        private readonly string windowClass;
        private readonly string title;
        private readonly object[] arguments;

        /// <param name="name">The command's name.</param>
        /// <param name="windowClass">An expression, see <see cref="Literal"/>.</param>
        /// <param name="title">An expression, see <see cref="Literal"/>.</param>
        /// <param name="arguments">
        /// Texts, whole numbers, true or false for a check box, lists of whole numbers for a rectangle, position or
        /// size, or a <see cref="Secret"/> for a text.
        /// </param>
        public Command(string name, string windowClass, string title, params object[] arguments)
        {
            this.name = name;
            this.windowClass = windowClass;
            this.title = title;
            this.arguments = arguments ?? new object[] { null };
            TimeoutMs = DefaultTimeoutMs;
        }

        /// <summary>Milliseconds; -1 for ever.</summary>
        public int TimeoutMs { get; set; }

        /// <summary>Compares class and title literally.</summary>
        public bool NonRegex { get; set; }

        /// <summary>An expression that matches this very text, whatever its case; any text for an empty one.</summary>
        public static string Literal(string text)
        {
            return text.Length == 0 ? ".*" : Regex.Replace(text, @"[\\^$.|?*+()\[\]{}]", @"\$0");
        }

        /// <summary>The line, as a text.</summary>
        public static implicit operator string(Command command)
        {
            return command.ToString();
        }

        /// <summary>The line.</summary>
        public override string ToString()
        {
            string fullName = NonRegex ? name + Suffix : name;
            string baseName = WithoutSuffix(fullName);
            int count;
            if (!ArgumentCounts.TryGetValue(baseName, out count))
                throw new ArgumentException("no command has this name: " + fullName);
            if (arguments.Length != count)
                throw new ArgumentException(string.Format(
                    "{0} takes {1} arguments behind class and title, not {2}", baseName, count, arguments.Length));
            var tokens = new List<string> { fullName, Quoted("the class", windowClass), Quoted("the title", title) };
            for (int i = 0; i < count; i++)
                tokens.Add(Token("argument " + (i + 1), arguments[i], TypesText(baseName) && i == count - 1));
            tokens.Add(Timeout());
            return string.Join(" ", tokens);
        }

        internal static string WithoutSuffix(string name)
        {
            bool ends = name.EndsWith(Suffix, StringComparison.Ordinal);
            return ends ? name.Substring(0, name.Length - Suffix.Length) : name;
        }

        /// <summary>The last argument of such a command is typed, and must not be shown.</summary>
        internal static bool TypesText(string baseName)
        {
            return baseName.StartsWith(TextCommand, StringComparison.Ordinal);
        }

        private string Timeout()
        {
            if (TimeoutMs == -1 || TimeoutMs >= 1) return TimeoutMs.ToString(CultureInfo.InvariantCulture);
            throw new ArgumentException("the timeout must be -1 or 1 to 2147483647 milliseconds");
        }

        private static string Token(string what, object argument, bool takesText)
        {
            var secret = argument as Secret;
            if (secret != null)
            {
                if (takesText) return secret.Reference;
                throw new ArgumentException(what + ": a secret can only be the text of a Window.SetText command");
            }
            if (argument is bool) return (bool)argument ? "1" : "0";
            if (IsWhole(argument)) return Convert.ToString(argument, CultureInfo.InvariantCulture);
            var text = argument as string;
            if (text == null && argument is IEnumerable) return Numbers(what, (IEnumerable)argument);
            if (takesText && text != null && Secret.LooksLikeReference(text))
                throw new ArgumentException(what + " would be a reference to the runner");
            return Quoted(what, text);
        }

        private static string Numbers(string what, IEnumerable values)
        {
            var numbers = new List<string>();
            foreach (object value in values)
            {
                if (!IsWhole(value))
                    throw new ArgumentException(
                        what + " is neither a text nor a whole number, nor a list of whole numbers");
                numbers.Add(Convert.ToString(value, CultureInfo.InvariantCulture));
            }
            if (numbers.Count == 0) throw new ArgumentException(what + " is empty");
            return string.Join(",", numbers);
        }

        private static bool IsWhole(object value)
        {
            TypeCode code = Convert.GetTypeCode(value);
            return code >= TypeCode.SByte && code <= TypeCode.UInt64 && !(value is Enum);
        }

        private static string Quoted(string what, string text)
        {
            if (text == null) throw new ArgumentException(what + " is neither a text nor a whole number");
            if (text.Length == 0) throw new ArgumentException(what + " is empty");
            if (text.IndexOf('\0') >= 0) throw new ArgumentException(what + " holds a zero character");
            if (text.IndexOfAny(new[] { '\r', '\n' }) >= 0) throw new ArgumentException(what + " holds a line break");
            if (HoldsHalfACharacter(text)) throw new ArgumentException(what + " holds half a character");
            return "\"" + text.Replace("\\", "\\\\").Replace("\"", "\\\"") + "\"";
        }

        private static bool HoldsHalfACharacter(string text)
        {
            for (int i = 0; i < text.Length; i++)
            {
                if (!char.IsSurrogate(text[i])) continue;
                if (i + 1 == text.Length || !char.IsSurrogatePair(text[i], text[i + 1])) return true;
                i++;
            }
            return false;
        }
    }

    /// <summary>A text that "dialwright run" fills in.</summary>
    public sealed class Secret
    {
        private Secret(string kind, string name)
        {
            if (!Regex.IsMatch(name ?? "", @"\A[A-Za-z0-9_]+\z"))
                throw new ArgumentException("'" + name + "' is no name of a secret: letters, digits and _");
            Reference = "${" + kind + ":" + name + "}";
        }

        /// <summary>How the text is written in a line.</summary>
        public string Reference { get; private set; }

        /// <summary>The text that the runner's secret file has under this name.</summary>
        public static Secret FromFile(string name)
        {
            return new Secret("secret", name);
        }

        /// <summary>The text that the runner finds in its environment under this name.</summary>
        public static Secret FromEnvironment(string name)
        {
            return new Secret("env", name);
        }

        internal static bool LooksLikeReference(string text)
        {
            const RegexOptions AnyCase = RegexOptions.IgnoreCase | RegexOptions.CultureInvariant;
            return Regex.IsMatch(text, @"\$\{(?:env|secret):|\$\$\{", AnyCase);
        }
    }
}
