//! What the library wrote into its error file while a call ran.

use std::fs::File;
use std::io::{Read, Seek, SeekFrom};
use std::os::windows::io::AsRawHandle;
use std::path::{Path, PathBuf};

use crate::system::{FileFacts, GetFileInformationByHandle};

// Of very many errors the end of each file is read.
const MOST_BYTES: u64 = 256 << 10;
const CONTINUED: usize = 80;

/// The pair of error files of one host.
pub(crate) struct ErrorLog([PathBuf; 2]);

/// How far one file went at some time, and which file it was.
#[derive(Clone, Copy, Default)]
pub(crate) struct FileMark {
    size: u64,
    index: [u32; 2],
}

pub(crate) type Mark = [FileMark; 2];

impl ErrorLog {
    pub(crate) fn of(program: &Path, session: u32) -> Self {
        let name = program.file_name().unwrap_or_default().to_string_lossy();
        let folder = program.with_file_name("logs").join("trace");
        ErrorLog([1, 2].map(|number| folder.join(format!("{name}_{session}_Dialwright_{number}_error.log"))))
    }

    pub(crate) fn mark(&self) -> Mark {
        [&self.0[0], &self.0[1]].map(|path| mark_of(path))
    }

    /// The messages of one thread of one process since the mark. A file that was begun anew goes on where the other
    /// one ended.
    pub(crate) fn since(&self, mark: &Mark, process: u32, thread: u32) -> Vec<String> {
        let now = self.mark();
        let from = [0, 1].map(|i| begin_of_new(mark[i], now[i]));
        let order = if from[0] == 0 { [1, 0] } else { [0, 1] };
        let contents = order.map(|i| read_from(&self.0[i], from[i].max(now[i].size.saturating_sub(MOST_BYTES))));
        contents.iter().flat_map(|content| messages(content, process, thread)).collect()
    }
}

fn mark_of(path: &Path) -> FileMark {
    // Opened for a moment only: while somebody holds the file open the library cannot begin it anew.
    let mut facts = FileFacts::default();
    let file = match File::open(path) {
        Ok(file) => file,
        Err(_) => return FileMark::default(),
    };
    // SAFETY: file and facts live until the call returns.
    if unsafe { GetFileInformationByHandle(file.as_raw_handle().cast(), &mut facts) } == 0 {
        return FileMark::default();
    }
    FileMark { size: (u64::from(facts.size[0]) << 32) + u64::from(facts.size[1]), index: facts.index }
}

fn begin_of_new(before: FileMark, now: FileMark) -> u64 {
    if before.index != now.index || now.size < before.size {
        0
    } else {
        before.size
    }
}

/// Empty where nothing can be read.
fn read_from(path: &Path, from: u64) -> String {
    let mut bytes = Vec::new();
    let read = File::open(path).and_then(|mut file| {
        file.seek(SeekFrom::Start(from))?;
        file.read_to_end(&mut bytes)
    });
    read.map_or(String::new(), |_| String::from_utf8_lossy(&bytes).into_owned())
}

/// The messages of `[time] [process:thread] [Dialwright  43   error] message`, without the indent of further lines.
fn messages(content: &str, process: u32, thread: u32) -> Vec<String> {
    let own = format!("] [{process}:{thread}] [Dialwright ");
    let continued = " ".repeat(CONTINUED);
    let mut found: Vec<String> = Vec::new();
    let mut is_own = false;
    for line in content.split('\n').map(|line| line.strip_suffix('\r').unwrap_or(line)) {
        if let Some(rest) = line.strip_prefix(&continued) {
            if let (true, Some(last)) = (is_own, found.last_mut()) {
                last.push('\n');
                last.push_str(rest);
            }
            continue;
        }
        let behind_own = line.strip_prefix('[').and_then(|line| line.split_once(&own));
        let message = behind_own.and_then(|(_, rest)| rest.split_once("] "));
        is_own = message.is_some();
        found.extend(message.map(|(_, message)| message.to_owned()));
    }
    found
}

#[cfg(test)]
mod tests {
    use super::*;

    const OURS: &str = "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  43   error] ";
    const THEIRS: &str = "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8877] [Dialwright  43   error] ";

    #[test]
    fn messages_are_those_of_one_thread() {
        let indent = " ".repeat(80);
        let content = format!(
            "{THEIRS}F: theirs\r\n{OURS}F: one\n{indent}goes on\r\n(Time Zone: UTC)\r\n{THEIRS}F\n{indent}x\r\n{OURS}F: two\r\n"
        );
        assert_eq!(messages(&content, 4312, 8876), ["F: one\ngoes on", "F: two"]);
    }

    #[test]
    fn a_file_that_was_begun_anew_is_all_new() {
        let before = FileMark { size: 100, index: [0, 7] };
        assert_eq!(begin_of_new(before, FileMark { size: 120, index: [0, 7] }), 100);
        assert_eq!(begin_of_new(before, FileMark { size: 120, index: [0, 8] }), 0);
        assert_eq!(begin_of_new(before, FileMark { size: 90, index: [0, 7] }), 0);
    }
}
