//! Drives the windows of other programs through Dialwright.dll.
//!
//! ```no_run
//! # #[cfg(windows)]
//! # fn main() -> Result<(), Box<dyn std::error::Error>> {
//! use dialwright::{literal, Command, Library};
//!
//! let library = Library::beside_program()?;
//! let line = Command::new("Window.SetText", "#32770", &literal("Sign in (1)"))
//!     .argument(1001)
//!     .argument("Ada")
//!     .timeout_ms(5000)
//!     .line()?;
//! library.execute(&line)?;
//! # Ok(())
//! # }
//! # #[cfg(not(windows))]
//! # fn main() {}
//! ```
//!
//! Lines can be written on any system; the library is for 64-bit Windows, x64 and ARM64. Every call blocks its thread
//! until it is done. Nothing here writes to standard output; the library itself copies its log there.

mod line;
mod mask;

#[cfg(windows)]
mod error_log;
#[cfg(windows)]
mod library;
#[cfg(windows)]
mod system;

#[cfg(windows)]
pub use library::{CallError, Library, LoadError};
pub use line::{literal, Argument, Command, LineError, COMMANDS, DEFAULT_TIMEOUT_MS, WAIT_FOREVER};
pub use mask::mask;
