package dialwright

import (
	"fmt"
	"regexp"
	"strconv"
	"strings"
	"time"
	"unicode/utf8"
)

// DefaultTimeout is what Command writes.
const DefaultTimeout = 10 * time.Second

// WaitForever is the timeout of a line that waits until its window comes.
const WaitForever = -time.Millisecond

const (
	nonRegexSuffix = ".NonRegex"
	mostTimeoutMs  = 1<<31 - 1
)

// How many arguments stand behind class and title.
var commands = map[string]int{
	"Window.SetText":                         2,
	"Window.SetText.Path":                    2,
	"Window.SetText.Position":                3,
	"Window.ClickButton":                     1,
	"Window.ClickButton.Path":                1,
	"Window.ClickButton.Position":            2,
	"Window.SelectDropdown.Value":            2,
	"Window.SelectDropdown.Index":            2,
	"Window.SelectDropdown.ByPath.Value":     2,
	"Window.SelectDropdown.ByPath.Index":     2,
	"Window.SelectDropdown.ByPosition.Value": 3,
	"Window.SelectDropdown.ByPosition.Index": 3,
	"Window.ClearText":                       1,
	"Window.ClearText.Path":                  1,
	"Window.ClearText.Position":              2,
	"Window.Move":                            2,
	"Window.BringToFront":                    0,
	"Window.Minimize":                        0,
	"Window.Maximize":                        0,
	"Window.Restore":                         0,
	"Window.Close":                           0,
	"Window.SelectRadio":                     1,
	"Window.SelectRadio.ByPath":              1,
	"Window.SelectRadio.ByPosition":          2,
	"Window.SetCheckbox":                     2,
	"Window.SetCheckbox.ByPath":              2,
	"Window.SetCheckbox.ByPosition":          3,
}

var (
	special    = regexp.MustCompile(`[\\^$.|?*+()\[\]{}]`)
	reference  = regexp.MustCompile(`(?i)\$\{(?:env|secret):|\$\$\{`)
	secretName = regexp.MustCompile(`^[A-Za-z0-9_]+$`)
)

// Secret is the text that `dialwright run` finds under this name in its secret file. It stands for the text of a
// Window.SetText command, and is not for a line that the library itself is given.
type Secret string

// Environment is the text that `dialwright run` finds in its environment, otherwise as Secret.
type Environment string

// Options is how a line is written. Its zero value is what Command uses.
type Options struct {
	// Timeout is whole milliseconds or WaitForever; 0 means DefaultTimeout.
	Timeout time.Duration
	// NonRegex compares class and title literally.
	NonRegex bool
}

// Command is Options{}.Command.
func Command(name, class, title string, arguments ...any) (string, error) {
	return Options{}.Command(name, class, title, arguments...)
}

// Command writes the line of a command, or says what cannot be written. An argument is a string, an int, a bool for a
// check box, an []int for a rectangle, position or size, a Secret or an Environment. Class and title are expressions,
// see Literal.
func (options Options) Command(name, class, title string, arguments ...any) (string, error) {
	if options.NonRegex {
		name += nonRegexSuffix
	}
	base := strings.TrimSuffix(name, nonRegexSuffix)
	count, known := commands[base]
	if !known {
		return "", fmt.Errorf("no command has this name: %s", name)
	}
	if len(arguments) != count {
		return "", fmt.Errorf("%s takes %d arguments behind class and title, not %d", base, count, len(arguments))
	}
	timeout, err := timeoutToken(options.Timeout)
	if err != nil {
		return "", err
	}
	tokens := []string{name}
	for i, criterion := range []string{class, title} {
		token, err := quoted(criterion)
		if err != nil {
			return "", fmt.Errorf("the %s %w", []string{"class", "title"}[i], err)
		}
		tokens = append(tokens, token)
	}
	for i, argument := range arguments {
		isTypedText := takesText(base) && i+1 == count
		token, err := argumentToken(argument, isTypedText)
		if err != nil {
			return "", fmt.Errorf("argument %d %w", i+1, err)
		}
		tokens = append(tokens, token)
	}
	return strings.Join(append(tokens, timeout), " "), nil
}

// Literal is an expression for class or title that matches this very text, whatever its case; any text for an empty one.
func Literal(text string) string {
	if text == "" {
		return ".*"
	}
	return special.ReplaceAllString(text, `\$0`)
}

func takesText(base string) bool { return strings.HasPrefix(base, "Window.SetText") }

func timeoutToken(timeout time.Duration) (string, error) {
	if timeout == 0 {
		timeout = DefaultTimeout
	}
	ms := timeout.Milliseconds()
	fits := timeout == WaitForever || (ms >= 1 && ms <= mostTimeoutMs)
	if !fits || timeout%time.Millisecond != 0 {
		return "", fmt.Errorf("the timeout must be -1 or 1 to %d milliseconds, and not %v", mostTimeoutMs, timeout)
	}
	return strconv.FormatInt(ms, 10), nil
}

func argumentToken(argument any, isTypedText bool) (string, error) {
	switch value := argument.(type) {
	case string:
		if isTypedText && reference.MatchString(value) {
			return "", fmt.Errorf("would be a reference to the runner")
		}
		return quoted(value)
	case int:
		return strconv.Itoa(value), nil
	case bool:
		if value {
			return "1", nil
		}
		return "0", nil
	case []int:
		return numbers(value)
	case Secret:
		return secretToken("secret", string(value), isTypedText)
	case Environment:
		return secretToken("env", string(value), isTypedText)
	}
	return "", fmt.Errorf("is neither a text nor a whole number, nor a list of whole numbers: %T", argument)
}

func numbers(values []int) (string, error) {
	if len(values) == 0 {
		return "", fmt.Errorf("is empty")
	}
	texts := make([]string, len(values))
	for i, value := range values {
		texts[i] = strconv.Itoa(value)
	}
	return strings.Join(texts, ","), nil
}

func secretToken(kind, name string, isTypedText bool) (string, error) {
	if !isTypedText {
		return "", fmt.Errorf("is a secret, which can only be the text of a Window.SetText command")
	}
	if !secretName.MatchString(name) {
		return "", fmt.Errorf("is no name of a secret: letters, digits and _")
	}
	return "${" + kind + ":" + name + "}", nil
}

// Every backslash is doubled: before a quote, and before some line ends, one alone would change what is read.
func quoted(text string) (string, error) {
	switch {
	case text == "":
		return "", fmt.Errorf("is empty")
	case strings.ContainsRune(text, 0):
		return "", fmt.Errorf("holds a zero character")
	case strings.ContainsAny(text, "\r\n"):
		return "", fmt.Errorf("holds a line break")
	case !utf8.ValidString(text):
		return "", fmt.Errorf("is no UTF-8")
	}
	return `"` + strings.NewReplacer(`\`, `\\`, `"`, `\"`).Replace(text) + `"`, nil
}
