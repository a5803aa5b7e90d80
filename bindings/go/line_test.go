package dialwright

import (
	"encoding/json"
	"os"
	"strings"
	"testing"
	"time"
)

type lineCase struct {
	Name, Command, Class, Title, Line, Refused string

	Arguments []any
	TimeoutMs *int64
	NonRegex  bool
}

// The table that all bindings share.
func table(t *testing.T) (rows struct {
	Commands         map[string]int
	Lines            []lineCase
	Patterns, Masked []map[string]string
}) {
	t.Helper()
	text, err := os.ReadFile("../../tests/bindings/lines.json")
	if err != nil {
		t.Fatal(err)
	}
	// JSON may name half a character, and Go's reader makes a whole one of it: these bytes are put in its place below.
	text = []byte(strings.ReplaceAll(string(text), `\ud83db`, `HALFb`))
	if err := json.Unmarshal(text, &rows); err != nil {
		t.Fatal(err)
	}
	return rows
}

func argumentOf(value any) any {
	switch value := value.(type) {
	case string:
		return strings.ReplaceAll(value, "HALF", "\xed\xa0\xbd")
	case float64:
		if value == float64(int(value)) {
			return int(value)
		}
	case []any:
		numbers := []int{}
		for _, number := range value {
			whole, isNumber := argumentOf(number).(int)
			if !isNumber {
				return value
			}
			numbers = append(numbers, whole)
		}
		return numbers
	case map[string]any:
		if name, isSecret := value["secret"]; isSecret {
			return Secret(name.(string))
		}
		return Environment(value["environment"].(string))
	}
	return value
}

func (row lineCase) write() (string, error) {
	arguments := make([]any, len(row.Arguments))
	for i, value := range row.Arguments {
		arguments[i] = argumentOf(value)
	}
	options := Options{NonRegex: row.NonRegex}
	if row.TimeoutMs != nil {
		options.Timeout = time.Duration(*row.TimeoutMs) * time.Millisecond
	}
	return options.Command(row.Command, row.Class, row.Title, arguments...)
}

func TestLinesAreWrittenAsInEveryLanguage(t *testing.T) {
	rows := table(t).Lines
	if len(rows) < 70 {
		t.Fatalf("%d rows", len(rows))
	}
	for _, row := range rows {
		line, err := row.write()
		switch {
		case row.TimeoutMs != nil && *row.TimeoutMs == 0:
			// The zero value of Options is the default.
			if err != nil || !strings.HasSuffix(line, " 10000") {
				t.Errorf("%s: %q, %v", row.Name, line, err)
			}
		case row.Refused == "" && (err != nil || line != row.Line):
			t.Errorf("%s: %q, %v; expected %q", row.Name, line, err, row.Line)
		case row.Refused == "holds half a character" && (err == nil || !strings.Contains(err.Error(), "is no UTF-8")):
			t.Errorf("%s: %q, %v", row.Name, line, err)
		case row.Refused == "" || row.Refused == "holds half a character":
		case err == nil || !strings.Contains(err.Error(), row.Refused):
			t.Errorf("%s: %q, %v; expected %q", row.Name, line, err, row.Refused)
		}
	}
}

func TestTheCommandsAreThoseOfTheTable(t *testing.T) {
	expected := table(t).Commands
	if len(expected) != len(commands) {
		t.Errorf("%d commands, not %d", len(commands), len(expected))
	}
	for name, count := range expected {
		if commands[name] != count {
			t.Errorf("%s takes %d arguments, not %d", name, count, commands[name])
		}
	}
}

func TestALiteralPatternIsEscaped(t *testing.T) {
	for _, row := range table(t).Patterns {
		if pattern := Literal(row["text"]); pattern != row["pattern"] {
			t.Errorf("%q: %q, not %q", row["text"], pattern, row["pattern"])
		}
	}
}

func TestMasksHideTypedTexts(t *testing.T) {
	for _, row := range table(t).Masked {
		if masked := Mask(row["line"]); masked != row["masked"] {
			t.Errorf("%q: %q, not %q", row["line"], masked, row["masked"])
		}
	}
}

func TestAQuoteThatNothingClosesHidesNoLess(t *testing.T) {
	for _, lineEnd := range []string{"\n", "\r"} {
		line := "Window.SetText c t 1 \"a\\" + lineEnd + "b\" 5"
		if masked := maskLine(line); strings.Contains(masked, " c ") || strings.Contains(masked, "a") {
			t.Errorf("%q: %q", line, masked)
		}
	}
}

func TestMessagesLoseTypedTexts(t *testing.T) {
	texts := append(hiddenTexts(` Window.SetText c t 1 "a \"quoted\" word" 5`), hiddenTexts("Window.SetText c t 1 abc 5")...)
	message := hideTexts(texts, `Invalid: a "quoted" word, "a \"quoted\" word", abc`)
	if message != "Invalid: *****, *****, abc" {
		t.Error(message)
	}
}

func TestATimeoutIsWholeMilliseconds(t *testing.T) {
	for _, timeout := range []time.Duration{time.Microsecond, 1500 * time.Microsecond, -time.Second, 25 * 24 * time.Hour} {
		if line, err := (Options{Timeout: timeout}).Command("Window.Close", "c", "t"); err == nil {
			t.Errorf("%v: %q", timeout, line)
		}
	}
}
