package dialwright

import "strings"

// CallError is a call of the library that failed.
type CallError struct {
	// Command is the line or the script, with its typed texts hidden; of a launch the program alone.
	Command string
	// Lines is what the library wrote into its error file meanwhile, "function: message"; none where that cannot be read.
	Lines []string
}

func (err *CallError) Error() string {
	return strings.Join(append([]string{"failed: " + err.Command}, err.Lines...), "\n    ")
}
