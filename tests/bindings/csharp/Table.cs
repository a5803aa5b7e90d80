using System.Collections.Generic;
using System.Globalization;
using System.IO;
using System.Runtime.Serialization.Json;
using System.Xml;
using Dialwright;

/// <summary>The table of lines that every binding must write.</summary>
internal sealed class Table
{
    private readonly XmlElement root;

    internal Table(string file)
    {
        var document = new XmlDocument();
        byte[] bytes = File.ReadAllBytes(file);
        var quotas = new XmlDictionaryReaderQuotas();
        using (XmlDictionaryReader reader = JsonReaderWriterFactory.CreateJsonReader(bytes, quotas))
            document.Load(reader);
        root = document.DocumentElement;
    }

    internal Dictionary<string, int> Commands
    {
        get
        {
            var commands = new Dictionary<string, int>();
            foreach (XmlElement element in root["commands"]) commands[NameOf(element)] = int.Parse(element.InnerText);
            return commands;
        }
    }

    internal IEnumerable<XmlElement> Rows(string name)
    {
        foreach (XmlElement row in root[name]) yield return row;
    }

    internal static string Field(XmlElement row, string name)
    {
        return row[name] == null ? null : row[name].InnerText;
    }

    internal static Command Write(XmlElement row)
    {
        var arguments = new List<object>();
        foreach (XmlElement argument in row["arguments"]) arguments.Add(Value(argument));
        var command = new Command(
            Field(row, "command"), Field(row, "class"), Field(row, "title"), arguments.ToArray());
        if (row["timeoutMs"] != null) command.TimeoutMs = int.Parse(Field(row, "timeoutMs"));
        if (row["nonRegex"] != null) command.NonRegex = bool.Parse(Field(row, "nonRegex"));
        return command;
    }

    private static object Value(XmlElement element)
    {
        switch (element.GetAttribute("type"))
        {
            case "number": return Number(element.InnerText);
            case "boolean": return bool.Parse(element.InnerText);
            case "null": return null;
            case "array":
                var values = new List<object>();
                foreach (XmlElement value in element) values.Add(Value(value));
                return values.ToArray();
            case "object":
                string name = element.FirstChild.InnerText;
                return element.FirstChild.Name == "secret" ? Secret.FromFile(name) : Secret.FromEnvironment(name);
            default: return element.InnerText;
        }
    }

    private static object Number(string text)
    {
        int whole;
        if (int.TryParse(text, out whole)) return whole;
        return double.Parse(text, CultureInfo.InvariantCulture);
    }

    /// <summary>A name that XML cannot spell stands in an attribute.</summary>
    private static string NameOf(XmlElement element)
    {
        return element.HasAttribute("item") ? element.GetAttribute("item") : element.Name;
    }
}
