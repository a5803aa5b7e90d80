package dialwright

import (
	"sort"
	"strings"
)

const (
	mask = "*****"
	// What is shorter is looked for in no message.
	leastHidden = 4
	blanks      = " \t\n\v\f\r"
)

// Mask gives the same lines with ***** for typed texts, and for all that stands in a line that is no valid command.
func Mask(script string) string {
	lines := strings.Split(script, "\n")
	for i, line := range lines {
		lines[i] = maskLine(line)
	}
	return strings.Join(lines, "\n")
}

// A token as the library reads it, and the place of what was written for it.
type token struct {
	text       string
	begin, end int
}

func maskLine(line string) string {
	hidden := hiddenTokens(line)
	for i := len(hidden) - 1; i >= 0; i-- {
		line = line[:hidden[i].begin] + `"` + mask + `"` + line[hidden[i].end:]
	}
	return line
}

// What maskLine hides, as it is and as it is written.
func hiddenTexts(line string) []string {
	var texts []string
	for _, token := range hiddenTokens(line) {
		texts = append(texts, token.text, line[token.begin:token.end])
	}
	return texts
}

func hideTexts(texts []string, message string) string {
	longestFirst := append([]string(nil), texts...)
	sort.SliceStable(longestFirst, func(i, j int) bool { return len(longestFirst[i]) > len(longestFirst[j]) })
	for _, text := range longestFirst {
		if len([]rune(text)) >= leastHidden {
			message = strings.ReplaceAll(message, text, mask)
		}
	}
	return message
}

func hiddenTokens(line string) []token {
	tokens := tokensOf(line)
	if len(tokens) == 0 {
		return nil
	}
	base := strings.TrimSuffix(tokens[0].text, nonRegexSuffix)
	count, known := commands[base]
	behindTitle := len(tokens) - 3
	if !known || (behindTitle != count && behindTitle != count+1) {
		return tokens[1:]
	}
	if !takesText(base) {
		return nil
	}
	return tokens[2+count : 3+count]
}

func tokensOf(line string) []token {
	var tokens []token
	for i := 0; i < len(line); {
		if strings.IndexByte(blanks, line[i]) >= 0 {
			i++
			continue
		}
		if end := behindQuoted(line, i); end > 0 {
			tokens = append(tokens, token{unescaped(line[i+1 : end-1]), i, end})
			i = end
			continue
		}
		end := len(line)
		if blank := strings.IndexAny(line[i:], blanks); blank >= 0 {
			end = i + blank
		}
		tokens = append(tokens, token{line[i:end], i, end})
		i = end
	}
	return tokens
}

// The place behind the quote that closes the one at open, or 0: then it is an ordinary character, if it is a quote.
func behindQuoted(line string, open int) int {
	if line[open] != '"' {
		return 0
	}
	for i := open + 1; i < len(line); i++ {
		if line[i] == '"' {
			return i + 1
		}
		if line[i] != '\\' {
			continue
		}
		for _, lineEnd := range []string{"\n", "\r", "\u2028", "\u2029"} {
			if strings.HasPrefix(line[i+1:], lineEnd) {
				return 0
			}
		}
		i++
	}
	return 0
}

func unescaped(inside string) string {
	return strings.NewReplacer(`\\`, `\`, `\"`, `"`).Replace(inside)
}
