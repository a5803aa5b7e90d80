//! Hides the typed texts in lines and in messages.

use std::ops::Range;

use crate::line::{arguments_of, takes_text};

const MASK: &str = "*****";
const LEAST_HIDDEN: usize = 4;

/// The same lines with ***** for typed texts, and for all that stands in a line that is no valid command.
pub fn mask(script: &str) -> String {
    script.split('\n').map(mask_line).collect::<Vec<_>>().join("\n")
}

/// A token as the library reads it, and the place of what was written for it.
struct Token {
    text: String,
    place: Range<usize>,
}

pub(crate) fn mask_line(line: &str) -> String {
    let mut masked = line.to_owned();
    for token in hidden_tokens(line).into_iter().rev() {
        masked.replace_range(token.place, &format!("\"{MASK}\""));
    }
    masked
}

/// What `mask_line` hides, as it is and as it is written.
#[cfg_attr(not(windows), allow(dead_code))]
pub(crate) fn hidden_texts(line: &str) -> Vec<String> {
    let hidden = hidden_tokens(line).into_iter();
    hidden.flat_map(|token| [line[token.place].to_owned(), token.text]).collect()
}

/// The message with ***** wherever it holds one of the texts; one below four characters stays.
#[cfg_attr(not(windows), allow(dead_code))]
pub(crate) fn hide_texts(texts: &[String], message: &str) -> String {
    let mut longest_first: Vec<_> = texts.iter().filter(|text| text.chars().count() >= LEAST_HIDDEN).collect();
    longest_first.sort_by_key(|text| std::cmp::Reverse(text.len()));
    longest_first.into_iter().fold(message.to_owned(), |message, text| message.replace(text, MASK))
}

fn hidden_tokens(line: &str) -> Vec<Token> {
    let mut tokens = tokens_of(line);
    let name = match tokens.first() {
        Some(token) => token.text.clone(),
        None => return tokens,
    };
    match arguments_of(&name) {
        Some(count) if tokens.len() == 3 + count || tokens.len() == 4 + count => {
            let text = tokens.swap_remove(2 + count);
            if takes_text(&name) {
                vec![text]
            } else {
                Vec::new()
            }
        }
        _ => tokens.split_off(1),
    }
}

fn is_blank(byte: u8) -> bool {
    byte == b' ' || (b'\t'..=b'\r').contains(&byte)
}

fn tokens_of(line: &str) -> Vec<Token> {
    let bytes = line.as_bytes();
    let mut tokens = Vec::new();
    let mut at = 0;
    while at < bytes.len() {
        if is_blank(bytes[at]) {
            at += 1;
            continue;
        }
        let closed = if bytes[at] == b'"' { behind_quoted(line, at) } else { None };
        let end = closed.unwrap_or_else(|| {
            bytes[at..].iter().position(|byte| is_blank(*byte)).map_or(bytes.len(), |length| at + length)
        });
        let text = match closed {
            Some(end) => unescaped(&line[at + 1..end - 1]),
            None => line[at..end].to_owned(),
        };
        tokens.push(Token { text, place: at..end });
        at = end;
    }
    tokens
}

/// The place behind the quote that closes the one at `open`; without one it is an ordinary character.
fn behind_quoted(line: &str, open: usize) -> Option<usize> {
    let mut characters = line[open + 1..].char_indices();
    while let Some((at, character)) = characters.next() {
        match character {
            '"' => return Some(open + 1 + at + 1),
            '\\' => match characters.next() {
                None | Some((_, '\n' | '\r' | '\u{2028}' | '\u{2029}')) => return None,
                Some(_) => {}
            },
            _ => {}
        }
    }
    None
}

fn unescaped(inside: &str) -> String {
    let mut text = String::new();
    let mut characters = inside.chars().peekable();
    while let Some(character) = characters.next() {
        match (character, characters.peek()) {
            ('\\', Some('"' | '\\')) => text.extend(characters.next()),
            _ => text.push(character),
        }
    }
    text
}

#[cfg(test)]
mod tests {
    use super::*;

    #[test]
    fn a_quote_that_nothing_closes_hides_no_less() {
        for line_end in ["\n", "\r"] {
            let masked = mask_line(&format!("Window.SetText c t 1 \"a\\{line_end}b\" 5"));
            assert!(!masked.contains(" c ") && !masked.contains('a'), "{masked}");
        }
    }

    #[test]
    fn messages_lose_typed_texts() {
        let mut texts = hidden_texts(r#" Window.SetText c t 1 "a \"quoted\" word" 5"#);
        texts.extend(hidden_texts("Window.SetText c t 1 abc 5"));
        let message = r#"Invalid: a "quoted" word, "a \"quoted\" word", abc"#;
        assert_eq!(hide_texts(&texts, message), "Invalid: *****, *****, abc");
    }
}
