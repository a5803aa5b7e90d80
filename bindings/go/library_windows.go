package dialwright

import (
	"debug/pe"
	"errors"
	"fmt"
	"os"
	"path/filepath"
	"runtime"
	"strings"
	"syscall"
	"unsafe"
)

// Its own imports come from its folder and the system, and never from the current folder.
const searchDllFolderAndSystem = 0x100 | 0x800

var (
	kernel32             = syscall.NewLazyDLL("kernel32.dll")
	loadLibraryEx        = kernel32.NewProc("LoadLibraryExW")
	currentThreadID      = kernel32.NewProc("GetCurrentThreadId")
	processIDToSessionID = kernel32.NewProc("ProcessIdToSessionId")
)

// Library is the loaded library. It stays loaded until the process ends. Its methods may be called from several
// goroutines at once.
type Library struct {
	validateCommand, validateScript, executeCommand, executeScript, programLaunch uintptr

	log errorLog
}

// Load loads the library at this full path; for "" Dialwright.dll beside the program.
func Load(path string) (*Library, error) {
	program, err := os.Executable()
	if err != nil {
		return nil, err
	}
	if path == "" {
		path = filepath.Join(filepath.Dir(program), "Dialwright.dll")
	}
	if err := refuse(path); err != nil {
		return nil, err
	}
	text, err := syscall.UTF16PtrFromString(path)
	if err != nil {
		return nil, err
	}
	module, _, err := loadLibraryEx.Call(uintptr(unsafe.Pointer(text)), 0, searchDllFolderAndSystem)
	if module == 0 {
		return nil, fmt.Errorf("%w: %s", err, path)
	}
	library := &Library{log: errorLogOf(program, session())}
	if err := library.find(syscall.Handle(module), path); err != nil {
		return nil, err
	}
	return library, nil
}

// Why this file cannot be loaded, as far as the file tells.
func refuse(path string) error {
	if !filepath.IsAbs(path) {
		return fmt.Errorf("this is not a full path: %s", path)
	}
	if _, err := os.Stat(path); errors.Is(err, os.ErrNotExist) {
		return fmt.Errorf("there is no such file: %s", path)
	}
	file, err := pe.Open(path)
	if err != nil {
		return fmt.Errorf("this is not a library, or it cannot be read: %s", path)
	}
	defer file.Close()
	machines := map[uint16]string{0x8664: "amd64", 0xAA64: "arm64", 0x14C: "386"}
	if machine := machines[file.Machine]; machine != runtime.GOARCH {
		return fmt.Errorf("this library is for %s, and this program is %s: %s", machine, runtime.GOARCH, path)
	}
	return nil
}

func (library *Library) find(module syscall.Handle, path string) error {
	for name, function := range map[string]*uintptr{
		"ValidateCommand": &library.validateCommand,
		"ValidateScript":  &library.validateScript,
		"ExecuteCommand":  &library.executeCommand,
		"ExecuteScript":   &library.executeScript,
		"ProgramLaunch":   &library.programLaunch,
	} {
		address, err := syscall.GetProcAddress(module, name)
		if err != nil {
			return fmt.Errorf("this library has no function %s: %s", name, path)
		}
		*function = address
	}
	return nil
}

// Validate tells whether the shape of a line is right. It touches no window.
func (library *Library) Validate(line string) bool { return validate(library.validateCommand, line) }

// ValidateScript tells whether the shape of every line is right. It touches no window.
func (library *Library) ValidateScript(script string) bool {
	return validate(library.validateScript, script)
}

// A text with a zero character, at which the library would stop reading, is not valid.
func validate(function uintptr, text string) bool {
	first, err := units(text)
	if err != nil {
		return false
	}
	result, _, _ := syscall.SyscallN(function, uintptr(unsafe.Pointer(first)))
	return int32(result) == 1
}

// Execute carries out one line. Where it fails the error is a *CallError.
func (library *Library) Execute(line string) error {
	return library.run(library.executeCommand, line, maskLine(line), hiddenTexts(line))
}

// ExecuteScript carries out a script up to the first line that fails. The error is a *CallError then.
func (library *Library) ExecuteScript(script string) error {
	var texts []string
	for _, line := range strings.Split(script, "\n") {
		texts = append(texts, hiddenTexts(line)...)
	}
	return library.run(library.executeScript, script, Mask(script), texts)
}

// Launch starts a program, without waiting for it. Its process ID; where it fails the error is a *CallError.
func (library *Library) Launch(program, arguments string) (uint32, error) {
	first, err := units(program)
	if err != nil {
		return 0, err
	}
	second, err := units(arguments)
	if err != nil {
		return 0, err
	}
	var process uint32
	err = library.call(program, nil, func() uintptr {
		result, _, _ := syscall.SyscallN(library.programLaunch, uintptr(unsafe.Pointer(first)),
			uintptr(unsafe.Pointer(second)), uintptr(unsafe.Pointer(&process)))
		return result
	})
	return process, err
}

func (library *Library) run(function uintptr, text, masked string, hidden []string) error {
	first, err := units(text)
	if err != nil {
		return err
	}
	return library.call(masked, hidden, func() uintptr {
		result, _, _ := syscall.SyscallN(function, uintptr(unsafe.Pointer(first)))
		return result
	})
}

// The goroutine keeps its thread during the call, by which its lines in the error file are known.
func (library *Library) call(command string, hidden []string, function func() uintptr) error {
	runtime.LockOSThread()
	defer runtime.UnlockOSThread()
	mark := library.log.mark()
	if int32(function()) == 1 {
		return nil
	}
	thread, _, _ := currentThreadID.Call()
	lines := library.log.since(mark, uint32(os.Getpid()), uint32(thread))
	for i, line := range lines {
		lines[i] = hideTexts(hidden, line)
	}
	return &CallError{Command: command, Lines: lines}
}

func units(text string) (*uint16, error) {
	first, err := syscall.UTF16PtrFromString(text)
	if err != nil {
		return nil, errors.New("the text holds a zero character")
	}
	return first, nil
}

func session() uint32 {
	var number uint32
	processIDToSessionID.Call(uintptr(os.Getpid()), uintptr(unsafe.Pointer(&number)))
	return number
}
