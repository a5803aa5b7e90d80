//! Dialwright.dll within this process.

use std::env::current_exe;
use std::ffi::c_void;
use std::fmt;
use std::os::windows::ffi::OsStrExt;
use std::path::Path;
use std::ptr::null_mut;

use crate::error_log::ErrorLog;
use crate::mask::{hidden_texts, hide_texts, mask, mask_line};
use crate::system;

#[cfg(target_arch = "aarch64")]
const MACHINE: u16 = 0xAA64;
#[cfg(not(target_arch = "aarch64"))]
const MACHINE: u16 = 0x8664;

type TextFunction = unsafe extern "C" fn(*const u16) -> i32;
type LaunchFunction = unsafe extern "C" fn(*const u16, *const u16, *mut u32) -> i32;

/// Why the library cannot be loaded, in one sentence.
#[derive(Debug, Clone, PartialEq, Eq)]
pub struct LoadError(String);

impl fmt::Display for LoadError {
    fn fmt(&self, formatter: &mut fmt::Formatter<'_>) -> fmt::Result {
        formatter.write_str(&self.0)
    }
}

impl std::error::Error for LoadError {}

/// A call of the library that failed.
#[derive(Debug, Clone, PartialEq, Eq)]
pub struct CallError {
    /// The line or the script, with its typed texts hidden; of a launch the program alone.
    pub command: String,
    /// What the library wrote into its error file meanwhile, "function: message"; none where that cannot be read.
    pub lines: Vec<String>,
}

impl fmt::Display for CallError {
    fn fmt(&self, formatter: &mut fmt::Formatter<'_>) -> fmt::Result {
        write!(formatter, "failed: {}", self.command)?;
        self.lines.iter().try_for_each(|line| write!(formatter, "\n    {line}"))
    }
}

impl std::error::Error for CallError {}

/// The loaded library. It stays loaded until the process ends. Calls of several threads may run at once.
///
/// A text with a zero character, at which the library would stop reading, is not valid, and a call with it fails
/// without lines.
pub struct Library {
    validate_command: TextFunction,
    validate_script: TextFunction,
    execute_command: TextFunction,
    execute_script: TextFunction,
    program_launch: LaunchFunction,
    log: ErrorLog,
}

impl Library {
    /// Loads Dialwright.dll beside the program.
    pub fn beside_program() -> Result<Self, LoadError> {
        let program = current_exe().map_err(|error| LoadError(error.to_string()))?;
        Self::load(&program.with_file_name("Dialwright.dll"))
    }

    /// Loads the library at this full path.
    pub fn load(path: &Path) -> Result<Self, LoadError> {
        let shown = path.display();
        refuse(path)?;
        let text = units(path.as_os_str()).ok_or_else(|| LoadError(format!("there is no such file: {shown}")))?;
        // SAFETY: the text ends in a zero and lives until the call returns.
        let module =
            unsafe { system::LoadLibraryExW(text.as_ptr(), null_mut(), system::SEARCH_DLL_FOLDER_AND_SYSTEM) };
        if module.is_null() {
            return Err(LoadError(format!("{}: {shown}", std::io::Error::last_os_error())));
        }
        let find = |name: &str| find(module, name).ok_or_else(|| LoadError(format!("this library has no function {name}: {shown}")));
        let program = current_exe().map_err(|error| LoadError(error.to_string()))?;
        // SAFETY: dialwright.h declares the functions so; the module is never freed.
        unsafe {
            Ok(Library {
                validate_command: std::mem::transmute(find("ValidateCommand")?),
                validate_script: std::mem::transmute(find("ValidateScript")?),
                execute_command: std::mem::transmute(find("ExecuteCommand")?),
                execute_script: std::mem::transmute(find("ExecuteScript")?),
                program_launch: std::mem::transmute(find("ProgramLaunch")?),
                log: ErrorLog::of(&program, session()),
            })
        }
    }

    /// Whether the shape of a line is right. Touches no window.
    pub fn validate(&self, line: &str) -> bool {
        call_text(self.validate_command, line)
    }

    /// Whether the shape of every line is right. Touches no window.
    pub fn validate_script(&self, script: &str) -> bool {
        call_text(self.validate_script, script)
    }

    /// Carries out one line.
    pub fn execute(&self, line: &str) -> Result<(), CallError> {
        self.call(mask_line(line), &hidden_texts(line), || call_text(self.execute_command, line))
    }

    /// Carries out a script up to the first line that fails.
    pub fn execute_script(&self, script: &str) -> Result<(), CallError> {
        let texts: Vec<_> = script.split('\n').flat_map(hidden_texts).collect();
        self.call(mask(script), &texts, || call_text(self.execute_script, script))
    }

    /// Starts a program, without waiting for it. Its process ID.
    pub fn launch(&self, program: &str, arguments: &str) -> Result<u32, CallError> {
        let mut process = 0;
        self.call(program.to_owned(), &[], || match (units(program.as_ref()), units(arguments.as_ref())) {
            // SAFETY: the texts end in a zero, and all three live until the call returns.
            (Some(first), Some(second)) => unsafe {
                (self.program_launch)(first.as_ptr(), second.as_ptr(), &mut process) == 1
            },
            _ => false,
        })?;
        Ok(process)
    }

    fn call(&self, command: String, texts: &[String], function: impl FnOnce() -> bool) -> Result<(), CallError> {
        let before = self.log.mark();
        if function() {
            return Ok(());
        }
        // SAFETY: it asks for nothing.
        let thread = unsafe { system::GetCurrentThreadId() };
        let lines = self.log.since(&before, std::process::id(), thread);
        Err(CallError { command, lines: lines.iter().map(|line| hide_texts(texts, line)).collect() })
    }
}

fn call_text(function: TextFunction, text: &str) -> bool {
    // SAFETY: the text ends in a zero and lives until the call returns.
    units(text.as_ref()).map_or(false, |units| unsafe { function(units.as_ptr()) == 1 })
}

/// UTF-16 with its zero; nothing for a text that holds one.
fn units(text: &std::ffi::OsStr) -> Option<Vec<u16>> {
    let mut units: Vec<u16> = text.encode_wide().collect();
    if units.contains(&0) {
        return None;
    }
    units.push(0);
    Some(units)
}

fn find(module: system::Handle, name: &str) -> Option<*const c_void> {
    let name = format!("{name}\0");
    // SAFETY: the name ends in a zero and lives until the call returns.
    let found = unsafe { system::GetProcAddress(module, name.as_ptr()) };
    (!found.is_null()).then(|| found)
}

/// Why this file cannot be loaded, as far as the file tells.
fn refuse(path: &Path) -> Result<(), LoadError> {
    let shown = path.display();
    if !path.is_absolute() {
        return Err(LoadError(format!("this is not a full path: {shown}")));
    }
    if !path.exists() {
        return Err(LoadError(format!("there is no such file: {shown}")));
    }
    match std::fs::read(path).ok().and_then(|bytes| machine_of(&bytes)) {
        None => Err(LoadError(format!("this is not a library, or it cannot be read: {shown}"))),
        Some(MACHINE) => Ok(()),
        Some(machine) => {
            let (file, program) = (machine_name(machine), machine_name(MACHINE));
            Err(LoadError(format!("this library is for {file}, and this program is {program}: {shown}")))
        }
    }
}

fn machine_name(machine: u16) -> &'static str {
    match machine {
        0x8664 => "x64",
        0xAA64 => "ARM64",
        0x14C => "x86",
        _ => "another architecture",
    }
}

fn machine_of(bytes: &[u8]) -> Option<u16> {
    let header = u32::from_le_bytes(bytes.get(60..64)?.try_into().ok()?) as usize;
    let is_program = bytes.starts_with(b"MZ") && bytes.get(header..header.checked_add(4)?)? == b"PE\0\0";
    let machine = u16::from_le_bytes(bytes.get(header + 4..header + 6)?.try_into().ok()?);
    is_program.then(|| machine)
}

fn session() -> u32 {
    let mut number = 0;
    // SAFETY: the number lives until the call returns.
    unsafe { system::ProcessIdToSessionId(std::process::id(), &mut number) };
    number
}
