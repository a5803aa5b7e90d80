package dialwright

import (
	"os"
	"path/filepath"
	"reflect"
	"strings"
	"testing"
)

const (
	ours   = "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  43   error] "
	others = "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8877] [Dialwright  43   error] "
)

func logIn(t *testing.T) errorLog {
	t.Helper()
	log := errorLogOf(filepath.Join(t.TempDir(), "host.exe"), 1)
	if err := os.MkdirAll(filepath.Dir(log[0]), 0o777); err != nil {
		t.Fatal(err)
	}
	return log
}

func add(t *testing.T, path, text string) {
	t.Helper()
	file, err := os.OpenFile(path, os.O_APPEND|os.O_CREATE|os.O_WRONLY, 0o666)
	if err != nil {
		t.Fatal(err)
	}
	defer file.Close()
	if _, err := file.WriteString(text); err != nil {
		t.Fatal(err)
	}
}

func expect(t *testing.T, log errorLog, mark errorMark, expected ...string) {
	t.Helper()
	if found := log.since(mark, 4312, 8876); !reflect.DeepEqual(found, expected) {
		t.Errorf("%q, not %q", found, expected)
	}
}

func TestErrorLinesAreTheNewOnesOfThisThread(t *testing.T) {
	log := logIn(t)
	add(t, log[0], ours+"F: before\r\n")
	mark := log.mark()
	expect(t, log, mark)
	add(t, log[0], others+"F: theirs\r\n"+ours+"F: one\n"+strings.Repeat(" ", 80)+"goes on\r\n"+
		others+"F: [4312:8876] [Dialwright no\r\nno line\r\n"+ours+"F: cut \xe6\x97\r\n")
	expect(t, log, mark, "F: one\ngoes on", "F: cut \uFFFD")
}

func TestErrorLinesGoOnInTheOtherFile(t *testing.T) {
	log := logIn(t)
	add(t, log[1], ours+"F: before\r\n")
	mark := log.mark()
	add(t, log[1], ours+"F: last\r\n")
	add(t, log[0], "(Time Zone: UTC) log rotated\r\n"+ours+"F: first\r\n")
	expect(t, log, mark, "F: last", "F: first")
}

func TestErrorLinesOfAFileBegunAnewAreAllNew(t *testing.T) {
	log := logIn(t)
	add(t, log[0], ours+"F: a long line of before\r\n")
	mark := log.mark()
	if err := os.Remove(log[0]); err != nil {
		t.Fatal(err)
	}
	add(t, log[0], ours+"F: new\r\n")
	expect(t, log, mark, "F: new")
}

func TestErrorLinesOfAFileBegunAnewAreAllNewThoughItIsLonger(t *testing.T) {
	log := logIn(t)
	add(t, log[0], ours+"F: before\r\n")
	mark := log.mark()
	if err := os.Rename(log[0], log[0]+".before"); err != nil {
		t.Fatal(err)
	}
	add(t, log[0], ours+"F: one\r\n"+ours+"F: two\r\n")
	expect(t, log, mark, "F: one", "F: two")
}

func TestNoErrorFileGivesNoLines(t *testing.T) {
	log := errorLogOf(filepath.Join(t.TempDir(), "host.exe"), 1)
	expect(t, log, log.mark())
}
