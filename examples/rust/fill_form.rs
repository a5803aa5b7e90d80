//! Fills in a form of another program and tells why a line fails. Start it beside Dialwright.dll and
//! practice_target.exe.
//!
//! Exit codes: 0 as it should be, 1 a line did not do what it should, or the library cannot be loaded.

use dialwright::{literal, Command, Library};
use std::error::Error;

fn fill_form(library: &Library, title: &str) -> Result<(), Box<dyn Error>> {
    let command = |name| Command::new(name, "#32770", title);
    let name = command("Window.SetText").argument(12).argument("Ada \"the first\" Lovelace");
    library.execute(&name.timeout_ms(20_000).line()?)?;
    library.execute(&command("Window.SetCheckbox").argument(31).argument(true).line()?)?;
    library.execute(&command("Window.SelectDropdown.Value").argument(51).argument("Beta").line()?)?;
    eprintln!("the form is filled in");
    Ok(())
}

fn main() -> Result<(), Box<dyn Error>> {
    let library = Library::beside_program()?;
    let title = format!("Rust example ({})", std::process::id());
    library.launch("practice_target.exe", &format!("--title \"{title}\""))?;
    let pattern = literal(&title);
    fill_form(&library, &pattern)?;
    // There is no such button.
    let missing = Command::new("Window.ClickButton", "#32770", &pattern).argument(311).timeout_ms(1000);
    match library.execute(&missing.line()?) {
        Ok(()) => return Err("a line that must fail did not".into()),
        Err(error) => eprintln!("{error}"),
    }
    library.execute(&Command::new("Window.Close", "#32770", &pattern).line()?)?;
    Ok(())
}
