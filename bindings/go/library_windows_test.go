package dialwright

import (
	"errors"
	"fmt"
	"os"
	"path/filepath"
	"runtime"
	"strings"
	"sync"
	"syscall"
	"testing"
	"time"
	"unsafe"
)

var (
	user32      = syscall.NewLazyDLL("user32.dll")
	findWindow  = user32.NewProc("FindWindowW")
	getDlgItem  = user32.NewProc("GetDlgItem")
	sendMessage = user32.NewProc("SendMessageW")
)

const (
	dialog     = "#32770"
	wmGetText  = 0xD
	bmGetCheck = 0xF0
)

func load(t *testing.T) *Library {
	t.Helper()
	library, err := Load("")
	if err != nil {
		t.Fatal(err)
	}
	return library
}

// A practice target in a process of its own; it ends with the test.
func practice(t *testing.T, library *Library, title string) {
	t.Helper()
	process, err := library.Launch("practice_target.exe", `--title "`+title+`"`)
	if err != nil {
		t.Fatal(err)
	}
	t.Cleanup(func() {
		if target, err := os.FindProcess(int(process)); err == nil {
			_ = target.Kill()
		}
	})
}

func execute(t *testing.T, library *Library, name, title string, arguments ...any) {
	t.Helper()
	line, err := Options{Timeout: 20 * time.Second, NonRegex: true}.Command(name, dialog, title, arguments...)
	if err == nil {
		err = library.Execute(line)
	}
	if err != nil {
		t.Fatal(err)
	}
}

func control(title string, id uintptr) uintptr {
	window, _, _ := findWindow.Call(0, uintptr(unsafe.Pointer(syscall.StringToUTF16Ptr(title))))
	found, _, _ := getDlgItem.Call(window, id)
	return found
}

func textOf(control uintptr) string {
	var text [200]uint16
	sendMessage.Call(control, wmGetText, uintptr(len(text)), uintptr(unsafe.Pointer(&text[0])))
	return syscall.UTF16ToString(text[:])
}

func TestAFormOfAnotherProcessIsFilledIn(t *testing.T) {
	library := load(t)
	title := fmt.Sprintf("日本語 (1) 😀 %d", os.Getpid())
	practice(t, library, title)
	execute(t, library, "Window.SetText", title, 12, `say "hi" to C:\`)
	execute(t, library, "Window.SetCheckbox", title, 31, true)
	if text := textOf(control(title, 12)); text != `say "hi" to C:\` {
		t.Errorf("%q", text)
	}
	if state, _, _ := sendMessage.Call(control(title, 31), bmGetCheck, 0, 0); state != 1 {
		t.Errorf("the state is %d", state)
	}
	if err := library.ExecuteScript("Window.Minimize.NonRegex #32770 \"" + title + "\"\n\nWindow.Close.NonRegex #32770 \"" + title + "\"\n"); err != nil {
		t.Error(err)
	}
}

func TestAFailingCallHasTheLinesOfTheErrorFile(t *testing.T) {
	library := load(t)
	err := library.ExecuteScript(" Window.SetText c t hunter22 x y z")
	var failure *CallError
	if !errors.As(err, &failure) {
		t.Fatal(err)
	}
	if strings.Contains(err.Error(), "hunter22") || !strings.HasPrefix(failure.Command, " Window.SetText \"*****\"") {
		t.Error(err)
	}
	expected := "DialogScriptManager::ValidateCommandArgs: Invalid argument count for Window.SetText"
	if len(failure.Lines) != 2 || failure.Lines[0] != expected {
		t.Errorf("%q", failure.Lines)
	}
	err = library.Execute("Window.SetText NoSuchClass t 1\n\"two\nlines\" 5")
	if !errors.As(err, &failure) || failure.Command != "Window.SetText NoSuchClass t 1\n\"*****\" 5" {
		t.Error(err)
	}
}

func TestCallsAtOnceHaveEachTheirOwnLines(t *testing.T) {
	library := load(t)
	var all sync.WaitGroup
	for i := 0; i < 8; i++ {
		name := fmt.Sprintf("Window.No%d", i)
		all.Add(1)
		go func() {
			defer all.Done()
			for round := 0; round < 20; round++ {
				var failure *CallError
				err := library.Execute(name + " c t")
				expected := "DialogScriptManager::ExecuteCommand: Unknown command: " + name
				if !errors.As(err, &failure) || len(failure.Lines) != 1 || failure.Lines[0] != expected {
					t.Errorf("%s: %v", name, err)
				}
			}
		}()
	}
	all.Wait()
}

func TestALineIsValidatedWithoutBeingCarriedOut(t *testing.T) {
	library := load(t)
	if !library.Validate("Window.Close c t") || library.Validate("Window.Close c") || library.Validate("Window.Close c t\x00") {
		t.Error("a line")
	}
	if !library.ValidateScript("Window.Close c t\n\nWindow.Close c t 5") || library.ValidateScript("Window.Close c t\nx") {
		t.Error("a script")
	}
	if err := library.Execute("Window.Close c t\x00 5"); err == nil || !strings.Contains(err.Error(), "zero character") {
		t.Error(err)
	}
}

func TestAFailingLaunchNamesTheProgramAndNotItsArguments(t *testing.T) {
	_, err := load(t).Launch("no-such-program.exe", "hunter22")
	var failure *CallError
	if !errors.As(err, &failure) || failure.Command != "no-such-program.exe" || len(failure.Lines) == 0 {
		t.Error(err)
	}
	if strings.Contains(err.Error(), "hunter22") {
		t.Error(err)
	}
}

func TestALibraryThatCannotBeLoadedSaysWhy(t *testing.T) {
	own, err := os.ReadFile(filepath.Join(filepath.Dir(os.Args[0]), "Dialwright.dll"))
	if err != nil {
		t.Fatal(err)
	}
	folder := t.TempDir()
	write := func(name string, content []byte) string {
		path := filepath.Join(folder, name)
		if err := os.WriteFile(path, content, 0o666); err != nil {
			t.Fatal(err)
		}
		return path
	}
	header := int(own[60]) + 256*int(own[61])
	foreign := append([]byte(nil), own...)
	machine, otherwise := []byte{0x64, 0xAA}, "this library is for arm64, and this program is amd64: "
	if runtime.GOARCH == "arm64" {
		machine, otherwise = []byte{0x64, 0x86}, "this library is for amd64, and this program is arm64: "
	}
	copy(foreign[header+4:], machine)
	for path, expected := range map[string]string{
		"Dialwright.dll":                   "this is not a full path: ",
		filepath.Join(folder, "none.dll"):  "there is no such file: ",
		write("text.dll", []byte("MZ no")): "this is not a library, or it cannot be read: ",
		write("foreign.dll", foreign):      otherwise,
		`C:\windows\system32\version.dll`:  "this library has no function ",
	} {
		library, err := Load(path)
		if library != nil || err == nil || !strings.HasPrefix(err.Error(), expected) || !strings.HasSuffix(err.Error(), path) {
			t.Errorf("%s: %v", path, err)
		}
	}
}
