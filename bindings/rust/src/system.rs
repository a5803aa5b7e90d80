//! The few functions of Windows that are needed.

use std::ffi::c_void;

pub type Handle = *mut c_void;

// Its own imports come from its folder and the system, and never from the current folder.
pub const SEARCH_DLL_FOLDER_AND_SYSTEM: u32 = 0x100 | 0x800;

/// What Windows knows of an open file: BY_HANDLE_FILE_INFORMATION.
#[repr(C)]
#[derive(Default)]
pub struct FileFacts {
    pub attributes: u32,
    pub times: [u32; 6],
    pub volume: u32,
    pub size: [u32; 2],
    pub links: u32,
    /// High half first; no two files of a volume have the same.
    pub index: [u32; 2],
}

#[link(name = "kernel32")]
extern "system" {
    pub fn LoadLibraryExW(path: *const u16, reserved: Handle, flags: u32) -> Handle;
    pub fn GetProcAddress(module: Handle, name: *const u8) -> *const c_void;
    pub fn GetFileInformationByHandle(file: Handle, facts: *mut FileFacts) -> i32;
    pub fn GetCurrentThreadId() -> u32;
    pub fn ProcessIdToSessionId(process: u32, session: *mut u32) -> i32;
}
