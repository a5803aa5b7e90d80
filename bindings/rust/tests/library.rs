//! The library as a program uses it: Dialwright.dll and practice_target.exe lie beside this one.
#![cfg(windows)]

use dialwright::{literal, CallError, Command, Library};
use std::path::{Path, PathBuf};

fn library() -> Library {
    Library::beside_program().expect("the library is beside the program")
}

#[test]
fn a_form_of_another_process_is_filled_in() {
    let library = library();
    let title = format!("日本語 (1) 😀 {}", std::process::id());
    let command = |name| Command::new(name, "#32770", &literal(&title)).timeout_ms(20_000);
    library.launch("practice_target.exe", &format!("--title \"{title}\"")).unwrap();
    library.execute(&command("Window.SetText").argument(12).argument("say \"hi\" to C:\\").line().unwrap()).unwrap();
    library.execute(&command("Window.SetCheckbox").argument(31).argument(true).line().unwrap()).unwrap();
    let script = [command("Window.Minimize").line().unwrap(), command("Window.Close").line().unwrap()];
    library.execute_script(&script.join("\r\n\r\n")).unwrap();
}

#[test]
fn a_failing_call_has_the_lines_of_the_error_file() {
    let error = library().execute_script(" Window.SetText c t hunter22 x y z").unwrap_err();
    assert!(!error.to_string().contains("hunter22"), "{error}");
    assert_eq!(error.command, " Window.SetText".to_owned() + &" \"*****\"".repeat(6));
    assert_eq!(
        error.lines[0],
        "DialogScriptManager::ValidateCommandArgs: Invalid argument count for Window.SetText"
    );
    assert_eq!(error.lines.len(), 2);
    let error = library().execute("Window.SetText NoSuchClass t 1\n\"two\nlines\" 5").unwrap_err();
    assert_eq!(error.command, "Window.SetText NoSuchClass t 1\n\"*****\" 5");
}

#[test]
fn calls_at_once_have_each_their_own_lines() {
    let threads = (0..8).map(|i| {
        std::thread::spawn(move || {
            let library = library();
            for _ in 0..20 {
                let error = library.execute(&format!("Window.No{i} c t")).unwrap_err();
                let expected = format!("DialogScriptManager::ExecuteCommand: Unknown command: Window.No{i}");
                assert_eq!(error.lines, [expected]);
            }
        })
    });
    for thread in threads.collect::<Vec<_>>() {
        thread.join().unwrap();
    }
}

#[test]
fn a_line_is_validated_without_being_carried_out() {
    let library = library();
    assert!(library.validate("Window.Close c t"));
    assert!(!library.validate("Window.Close c"));
    assert!(!library.validate("Window.Close c t\0"));
    assert!(library.validate_script("Window.Close c t\n\nWindow.Close c t 5"));
    assert!(!library.validate_script("Window.Close c t\nx"));
    let expected = CallError { command: "Window.Close c t\0 5".to_owned(), lines: vec![] };
    assert_eq!(library.execute("Window.Close c t\0 5"), Err(expected));
}

#[test]
fn a_failing_launch_names_the_program_and_not_its_arguments() {
    let error = library().launch("no-such-program.exe", "hunter22").unwrap_err();
    assert_eq!(error.command, "no-such-program.exe");
    assert!(!error.lines.is_empty());
    assert!(!error.to_string().contains("hunter22"), "{error}");
}

#[test]
fn a_library_that_cannot_be_loaded_says_why() {
    let folder = std::env::temp_dir().join(format!("dialwright-rust-{}", std::process::id()));
    std::fs::create_dir_all(&folder).unwrap();
    let write = |name: &str, bytes: &[u8]| -> PathBuf {
        let path = folder.join(name);
        std::fs::write(&path, bytes).unwrap();
        path
    };
    let program = std::env::current_exe().unwrap();
    let mut foreign = std::fs::read(program.with_file_name("Dialwright.dll")).unwrap();
    let header = usize::from(foreign[60]) + 256 * usize::from(foreign[61]);
    foreign[header + 4..header + 6].copy_from_slice(&[0x4C, 0x01]);
    let refused = |path: &Path, why: &str| {
        let error = Library::load(path).err().expect("it cannot be loaded").to_string();
        assert_eq!(error, format!("{why}: {}", path.display()));
    };
    refused(Path::new("Dialwright.dll"), "this is not a full path");
    refused(&folder.join("none.dll"), "there is no such file");
    refused(&write("text.dll", b"MZ no"), "this is not a library, or it cannot be read");
    refused(&write("foreign.dll", &foreign), "this library is for x86, and this program is x64");
    refused(Path::new("C:\\windows\\system32\\version.dll"), "this library has no function ValidateCommand");
    std::fs::remove_dir_all(&folder).unwrap();
}
