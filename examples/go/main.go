// Fills in a form of another program and tells why a line fails. Start it beside Dialwright.dll and practice_target.exe.
//
// Exit codes: 0 as it should be, 1 a line did not do what it should, or the library cannot be loaded.
package main

import (
	"fmt"
	"os"
	"time"

	"dialwright"
)

const class = "#32770"

// Writes a line and carries it out.
func act(library *dialwright.Library, timeout time.Duration, name, title string, arguments ...any) error {
	line, err := dialwright.Options{Timeout: timeout}.Command(name, class, title, arguments...)
	if err != nil {
		return err
	}
	return library.Execute(line)
}

func fillForm(library *dialwright.Library, title string) error {
	if err := act(library, 20*time.Second, "Window.SetText", title, 12, `Ada "the first" Lovelace`); err != nil {
		return err
	}
	if err := act(library, 5*time.Second, "Window.SetCheckbox", title, 31, true); err != nil {
		return err
	}
	return act(library, 5*time.Second, "Window.SelectDropdown.Value", title, 51, "Beta")
}

func run() error {
	library, err := dialwright.Load("")
	if err != nil {
		return err
	}
	title := fmt.Sprintf("Go example (%d)", os.Getpid())
	if _, err := library.Launch("practice_target.exe", fmt.Sprintf("--title %q", title)); err != nil {
		return err
	}
	pattern := dialwright.Literal(title)
	if err := fillForm(library, pattern); err != nil {
		return err
	}
	fmt.Fprintln(os.Stderr, "the form is filled in")
	// There is no such button.
	err = act(library, time.Second, "Window.ClickButton", pattern, 311)
	fmt.Fprintln(os.Stderr, err)
	if err == nil {
		return fmt.Errorf("a line that must fail did not")
	}
	return act(library, 5*time.Second, "Window.Close", pattern)
}

func main() {
	if err := run(); err != nil {
		fmt.Fprintln(os.Stderr, "example:", err)
		os.Exit(1)
	}
}
