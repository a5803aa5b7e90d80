package dialwright

import (
	"bytes"
	"fmt"
	"io"
	"os"
	"path/filepath"
	"strings"
)

// Of very many errors the end of each file is read.
const mostErrorBytes = 256 << 10

var continued = strings.Repeat(" ", 80)

// The pair of error files of one host.
type errorLog [2]string

// How far the error files of a host went at some time; nil for one that was not there.
type errorMark [2]os.FileInfo

func errorLogOf(program string, session uint32) errorLog {
	var log errorLog
	for i := range log {
		name := fmt.Sprintf("%s_%d_Dialwright_%d_error.log", filepath.Base(program), session, i+1)
		log[i] = filepath.Join(filepath.Dir(program), "logs", "trace", name)
	}
	return log
}

func (log errorLog) mark() errorMark {
	var mark errorMark
	for i, path := range log {
		if file, err := openShared(path); err == nil {
			mark[i], _ = file.Stat()
			file.Close()
		}
	}
	return mark
}

// The messages of one thread of one process since the mark.
func (log errorLog) since(mark errorMark, process, thread uint32) []string {
	var added [2][]string
	anewFirst := false
	for i, path := range log {
		content, anew := readSince(path, mark[i])
		added[i] = messages(content, process, thread)
		anewFirst = anewFirst || (i == 0 && anew)
	}
	if anewFirst {
		// A file that was begun anew goes on where the other one ended.
		return append(added[1], added[0]...)
	}
	return append(added[0], added[1]...)
}

// What the file has more than at the mark, and whether it was begun anew.
func readSince(path string, before os.FileInfo) ([]byte, bool) {
	// Opened for a moment only: while somebody holds the file open the library cannot begin it anew.
	file, err := openShared(path)
	if err != nil {
		return nil, false
	}
	defer file.Close()
	now, err := file.Stat()
	if err != nil {
		return nil, false
	}
	anew := before == nil || now.Size() < before.Size() || !os.SameFile(before, now)
	from := int64(0)
	if !anew {
		from = before.Size()
	}
	if now.Size()-from > mostErrorBytes {
		from = now.Size() - mostErrorBytes
	}
	content, err := io.ReadAll(io.NewSectionReader(file, from, now.Size()-from))
	if err != nil {
		return nil, anew
	}
	return content, anew
}

// The messages of "[time] [process:thread] [Dialwright  43   error] message", without the indent of their further lines.
func messages(content []byte, process, thread uint32) []string {
	own := fmt.Sprintf("] [%d:%d] [Dialwright ", process, thread)
	var found []string
	isOwn := false
	for _, raw := range bytes.Split(content, []byte("\n")) {
		line := strings.TrimSuffix(strings.ToValidUTF8(string(raw), "\uFFFD"), "\r")
		if strings.HasPrefix(line, continued) {
			if isOwn {
				found[len(found)-1] += "\n" + line[len(continued):]
			}
			continue
		}
		_, rest, _ := strings.Cut(line, own)
		_, message, ends := strings.Cut(rest, "] ")
		isOwn = ends && strings.HasPrefix(line, "[")
		if isOwn {
			found = append(found, message)
		}
	}
	return found
}
