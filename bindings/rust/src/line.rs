//! Writes command lines.

use std::fmt;

/// What a line gets that names no other.
pub const DEFAULT_TIMEOUT_MS: i64 = 10_000;
/// The timeout of a line that waits until its window comes.
pub const WAIT_FOREVER: i64 = -1;

/// The commands, and how many arguments stand behind class and title.
pub const COMMANDS: [(&str, usize); 27] = [
    ("Window.SetText", 2),
    ("Window.SetText.Path", 2),
    ("Window.SetText.Position", 3),
    ("Window.ClickButton", 1),
    ("Window.ClickButton.Path", 1),
    ("Window.ClickButton.Position", 2),
    ("Window.SelectDropdown.Value", 2),
    ("Window.SelectDropdown.Index", 2),
    ("Window.SelectDropdown.ByPath.Value", 2),
    ("Window.SelectDropdown.ByPath.Index", 2),
    ("Window.SelectDropdown.ByPosition.Value", 3),
    ("Window.SelectDropdown.ByPosition.Index", 3),
    ("Window.ClearText", 1),
    ("Window.ClearText.Path", 1),
    ("Window.ClearText.Position", 2),
    ("Window.Move", 2),
    ("Window.BringToFront", 0),
    ("Window.Minimize", 0),
    ("Window.Maximize", 0),
    ("Window.Restore", 0),
    ("Window.Close", 0),
    ("Window.SelectRadio", 1),
    ("Window.SelectRadio.ByPath", 1),
    ("Window.SelectRadio.ByPosition", 2),
    ("Window.SetCheckbox", 2),
    ("Window.SetCheckbox.ByPath", 2),
    ("Window.SetCheckbox.ByPosition", 3),
];

const NON_REGEX: &str = ".NonRegex";
const MOST_TIMEOUT_MS: i64 = i32::MAX as i64;

/// A line that cannot be written: one sentence of why.
#[derive(Debug, Clone, PartialEq, Eq)]
pub struct LineError(String);

impl fmt::Display for LineError {
    fn fmt(&self, formatter: &mut fmt::Formatter<'_>) -> fmt::Result {
        formatter.write_str(&self.0)
    }
}

impl std::error::Error for LineError {}

/// An argument behind class and title.
#[derive(Debug, Clone, PartialEq, Eq)]
pub enum Argument {
    Text(String),
    /// One number, or those of a rectangle (left, top, right, bottom), a position or a size.
    Numbers(Vec<i32>),
    /// The text that `dialwright run` finds under this name in its secret file. It stands for the text of a
    /// Window.SetText command, and is not for a line that the library itself is given.
    Secret(String),
    /// The text that `dialwright run` finds in its environment, otherwise as `Secret`.
    Environment(String),
}

impl From<&str> for Argument {
    fn from(text: &str) -> Self {
        Argument::Text(text.to_owned())
    }
}

impl From<i32> for Argument {
    fn from(number: i32) -> Self {
        Argument::Numbers(vec![number])
    }
}

impl From<bool> for Argument {
    fn from(is_checked: bool) -> Self {
        Argument::Numbers(vec![i32::from(is_checked)])
    }
}

impl From<&[i32]> for Argument {
    fn from(numbers: &[i32]) -> Self {
        Argument::Numbers(numbers.to_vec())
    }
}

impl<const COUNT: usize> From<[i32; COUNT]> for Argument {
    fn from(numbers: [i32; COUNT]) -> Self {
        Argument::Numbers(numbers.to_vec())
    }
}

/// A command that becomes a line.
#[derive(Debug, Clone)]
pub struct Command {
    name: String,
    class: String,
    title: String,
    arguments: Vec<Argument>,
    timeout_ms: i64,
}

impl Command {
    /// Class and title are expressions, see [`literal`].
    pub fn new(name: &str, class: &str, title: &str) -> Self {
        Command {
            name: name.to_owned(),
            class: class.to_owned(),
            title: title.to_owned(),
            arguments: Vec::new(),
            timeout_ms: DEFAULT_TIMEOUT_MS,
        }
    }

    pub fn argument(mut self, argument: impl Into<Argument>) -> Self {
        self.arguments.push(argument.into());
        self
    }

    /// 1 to 2,147,483,647 milliseconds, or [`WAIT_FOREVER`].
    pub fn timeout_ms(mut self, milliseconds: i64) -> Self {
        self.timeout_ms = milliseconds;
        self
    }

    /// Compares class and title literally.
    pub fn non_regex(mut self) -> Self {
        self.name += NON_REGEX;
        self
    }

    /// The line, or why it cannot be written.
    pub fn line(&self) -> Result<String, LineError> {
        let count = arguments_of(&self.name)
            .ok_or_else(|| LineError(format!("no command has this name: {}", self.name)))?;
        if self.arguments.len() != count {
            let given = self.arguments.len();
            let sentence = format!("{} takes {count} arguments behind class and title, not {given}", self.name);
            return Err(LineError(sentence));
        }
        if self.timeout_ms != WAIT_FOREVER && !(1..=MOST_TIMEOUT_MS).contains(&self.timeout_ms) {
            return Err(LineError(format!("the timeout must be -1 or 1 to {MOST_TIMEOUT_MS} milliseconds")));
        }
        let at = |what: String| move |why| LineError(format!("{what} {why}"));
        let mut tokens = vec![self.name.clone()];
        tokens.push(quoted(&self.class).map_err(at("the class".to_owned()))?);
        tokens.push(quoted(&self.title).map_err(at("the title".to_owned()))?);
        for (i, argument) in self.arguments.iter().enumerate() {
            let is_typed_text = takes_text(&self.name) && i + 1 == count;
            tokens.push(token(argument, is_typed_text).map_err(at(format!("argument {}", i + 1)))?);
        }
        tokens.push(self.timeout_ms.to_string());
        Ok(tokens.join(" "))
    }
}

/// An expression for class or title that matches this very text, whatever its case; any text for an empty one.
pub fn literal(text: &str) -> String {
    if text.is_empty() {
        return ".*".to_owned();
    }
    let mut pattern = String::new();
    for character in text.chars() {
        if "\\^$.|?*+()[]{}".contains(character) {
            pattern.push('\\');
        }
        pattern.push(character);
    }
    pattern
}

/// How many arguments the command has behind class and title, with `.NonRegex` or without.
pub(crate) fn arguments_of(name: &str) -> Option<usize> {
    let base = name.strip_suffix(NON_REGEX).unwrap_or(name);
    COMMANDS.iter().find(|(known, _)| *known == base).map(|(_, count)| *count)
}

pub(crate) fn takes_text(name: &str) -> bool {
    name.starts_with("Window.SetText")
}

fn token(argument: &Argument, is_typed_text: bool) -> Result<String, &'static str> {
    match argument {
        Argument::Text(text) if is_typed_text && holds_reference(text) => Err("would be a reference to the runner"),
        Argument::Text(text) => quoted(text),
        Argument::Numbers(numbers) if numbers.is_empty() => Err("is empty"),
        Argument::Numbers(numbers) => {
            Ok(numbers.iter().map(i32::to_string).collect::<Vec<_>>().join(","))
        }
        Argument::Secret(name) => secret("secret", name, is_typed_text),
        Argument::Environment(name) => secret("env", name, is_typed_text),
    }
}

fn secret(kind: &str, name: &str, is_typed_text: bool) -> Result<String, &'static str> {
    if !is_typed_text {
        return Err("is a secret, which can only be the text of a Window.SetText command");
    }
    if name.is_empty() || !name.chars().all(|c| c.is_ascii_alphanumeric() || c == '_') {
        return Err("is no name of a secret: letters, digits and _");
    }
    Ok(format!("${{{kind}:{name}}}"))
}

fn holds_reference(text: &str) -> bool {
    let lower = text.to_ascii_lowercase();
    ["${secret:", "${env:", "$${"].iter().any(|beginning| lower.contains(beginning))
}

/// Every backslash is doubled: before a quote, and before some line ends, one alone would change what is read.
fn quoted(text: &str) -> Result<String, &'static str> {
    if text.is_empty() {
        return Err("is empty");
    }
    if text.contains('\0') {
        return Err("holds a zero character");
    }
    if text.contains(&['\r', '\n'][..]) {
        return Err("holds a line break");
    }
    Ok(format!("\"{}\"", text.replace('\\', "\\\\").replace('"', "\\\"")))
}
