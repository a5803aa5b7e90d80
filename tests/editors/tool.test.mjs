import assert from 'node:assert/strict';
import { after, test } from 'node:test';

import { refused, textsOf, tokenize } from './grammar.mjs';
import { expansions } from './snippet_text.mjs';
import { commandTable, readJson } from './table.mjs';
import { Folder } from './tool.mjs';

const folder = new Folder();
after(() => folder.remove());

/** The column of the first invalid scope, counted as check counts; 0 where there is none. */
function firstRefusedColumn(line) {
  const token = tokenize(line).find(({ scopes }) => scopes.some((scope) => scope.startsWith('invalid.illegal')));
  return token ? token.from + 1 : 0;
}

function matchProblems(output) {
  const { regexp, ...groups } = readJson('package.json').contributes.problemMatchers[0].pattern;
  return output.trimEnd().split(/\r?\n/).map((line) => {
    const match = new RegExp(regexp).exec(line);
    assert.ok(match, `the problem matcher does not read: ${line}`);
    return Object.fromEntries(Object.entries(groups).map(([name, group]) => [name, match[group]]));
  });
}

test('check takes every line that a snippet makes, without a word', () => {
  const lines = Object.values(readJson('snippets/dialwright.json')).flatMap(({ body }) => expansions(body));
  assert.equal(lines.length, 27 + 3);
  assert.deepEqual(folder.findings(lines), []);
  for (const line of lines) assert.deepEqual(refused(line), [], line);
});

// Each has one mistake. Too few arguments and faulty expressions are missing: the grammar has no place for the one and
// does not see the other.
const MISTAKES = String.raw`
Window.Clsoe c t 50
window.Close c t 50
Window.Close"c" t 50
  "Window.Cloze" c t 50
Window.SetText.ByPath c t 1 x 50
Window.Close c t 50 60
Window.Move c "t" 1,2 3,4 50 "too much"
Window.Close "" t 50
Window.SetText c t 1 "" 50
Window.ClickButton c t OK 50
Window.ClickButton c t 1 soon
Window.SetText c "naïve 😀 title" one x 50
Window.SetCheckbox c t 1 2 50
Window.SetCheckbox c t 1 "on" 50
Window.SetCheckbox.ByPosition c t 1,2,3,4,5 8 1 50
Window.SelectDropdown.Index c t 1 -1 50
Window.SelectDropdown.ByPosition.Value c t 1,2,3 8 x 50
Window.ClickButton.Path c t 0.1 50
Window.ClickButton.Path c t 2..1 50
Window.ClearText.Position c t 1,2,3 8 50
Window.ClearText.Position c t 1,2,3,4 -8 50
Window.ClearText.Position.NonRegex c ( 1,2,3,4,5 8 50
Window.Move c t 1,2 3 50
Window.Move c t 1;2 3,4 50
Window.Move c t 1,x 3,4 50
`.trim().split('\n');

// Each is taken, if with a warning.
const SOUND = String.raw`
"Window.SetText" "c""t"1 "Ada"50
Window.ClickButton c t 12abc 5000ms
Window.ClickButton c t 12"x" "50 ms"
Window.ClickButton.Path c t 2a.+03. 50
Window.ClearText.Position c t 1px,2,3,4, 8 50
Window.Close c t -1
Window.Close c [a-z(]+ 50
Window.Close c "Save \\[As\\] \(1\)" 50
Window.Close.NonRegex ( [ 50
Window.Move c t "1, -2" "+3,4," 50
Window.SelectDropdown.ByPosition.Index c t 1,2,3,4,5,6 8 1 50
Window.SelectDropdown.ByPosition.Value c t 1,2,3,4,5 8 x 50
Window.SetCheckbox c t "31" " 1x" "5000"
Window.SetText c t 7 "a\"b\\" 50
Window.SetText c t 7 Ada
Window.SetText c t 7 C:\Temp\ 50
`.trim().split('\n');

test('the grammar refuses what check refuses, and at the same column', () => {
  const errors = folder.findings(MISTAKES).filter(({ severity }) => severity === 'error');
  assert.deepEqual(errors.map(({ line }) => line), MISTAKES.map((_, at) => at + 1));
  for (const { line, column } of errors) {
    assert.equal(firstRefusedColumn(MISTAKES[line - 1]), column, MISTAKES[line - 1]);
  }
});

test('the grammar takes what check takes', () => {
  const more = ['\tWindow.Close\tc\tt\t50', 'Window.SetText c t 1 ${secret:A} 50'];
  const lines = [...SOUND, ...more, ...commandTable().map(({ example }) => example)];
  assert.deepEqual(folder.findings(lines).filter(({ severity }) => severity === 'error'), []);
  for (const line of lines) assert.deepEqual(refused(line), [], line);
});

// Values of all kinds, parted by two blanks.
const PIECES = String.raw`0  1  2  -1  +3  07  12abc  50  x"  ##  #32770  .*  a\\b  \\  "a b"  "a\"b"  "\\\\"  ""
2.1  0.1  2..1  2.  .2  "2.1"  "."  1,2  1,2,  1;2  ,1  a,b  1.5,2  "1, 2"  ","  "1"  "-1"  " 2 "
1,2,3,4  1,-2,3,4,5  "1,2,3,4"  "1,2,3,4,5"  " 1,2,3 "`.split(/ {2}|\n/);

/** Numbers from 0 up to a limit, the same in every run. */
function dice(seed) {
  let state = seed;
  return (limit) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * limit);
  };
}

test('grammar and check agree on lines by chance', () => {
  const roll = dice(20);
  const names = [...commandTable().map(({ name }) => name), 'Window.Clsoe'];
  const lines = Array.from({ length: 4000 }, () => {
    const name = names[roll(names.length)] + (roll(4) === 0 ? '.NonRegex' : '');
    const pieces = Array.from({ length: 1 + roll(6) }, () => PIECES[roll(PIECES.length)] + (roll(9) === 0 ? '' : ' '));
    return `${name} c t ${pieces.join('')}`.trimEnd();
  });
  const errors = new Map();
  for (const { line, code, text, severity } of folder.findings(lines)) {
    if (severity === 'error') errors.set(line, `${code} ${text}`);
  }
  const counts = { refused: 0, taken: 0 };
  lines.forEach((line, at) => {
    const error = errors.get(at + 1);
    if (textsOf(line, 'invalid.illegal.open-quote').length > 0) return;
    if (error?.startsWith('DW103') && refused(line).length === 0) return;  // too few
    assert.equal(refused(line).length > 0, error !== undefined, `${line}: ${error}`);
    counts[error ? 'refused' : 'taken'] += 1;
  });
  assert.ok(counts.refused > 500 && counts.taken > 100, JSON.stringify(counts));
});

test('run refuses the placeholders that the grammar refuses, and at the same column', () => {
  const lines = [
    'Window.SetText c "😀 ${env:X}" 1 x 50',
    'Window.SetText c t 1 "Hello ${env:X}" 50',
    'Window.SetText c t 1 ${Secret:A} 50',
    'Window.SelectDropdown.Value c t 1 ${secret:A} 50',
    'Window.SetText.NonRegex c ${secret:A} 1 x 50',
    'Window.SetText c t 1 ${secret:A} 50',
    'Window.SetText c t 1 "${secret:A}" 50',
    'Window.SetText c t 1 $${env:X} 50',
    'Window.SetText c t 1 ${file:X} 50',
    'Window.Close.NonRegex c $${env:X} 50',
  ];
  const secrets = folder.write('secrets.txt', ['A=correct horse']);
  const script = folder.write('run.dialwright', lines);
  const { code, talk } = folder.run('run', '--dry-run', '--no-check', '--secret-file', secrets, script);
  assert.equal(code, 2, talk);
  const problems = matchProblems(talk.split('\n').filter((line) => line.startsWith(script)).join('\n'));
  assert.deepEqual(problems.map(({ line }) => Number(line)), [1, 2, 3, 4, 5]);
  lines.forEach((line, at) => assert.equal(refused(line).length > 0, at < problems.length, line));
  for (const { line, column, severity } of problems) {
    assert.equal(severity, 'error');
    // run points at the token, the grammar at the placeholder within it.
    const from = Number(column) - 1;
    assert.equal(lines[line - 1].slice(from).indexOf('${'), firstRefusedColumn(lines[line - 1]) - 1 - from);
  }
});

test('the problem matcher reads all that check writes', () => {
  const lines = ['# a comment', 'Window.Clsoe c t 50', 'Window.SetText c t 1 4711'];
  const script = folder.write('matched.dialwright', lines);
  const drive = `Z:${script.replaceAll('/', '\\')}`;
  for (const file of [script, drive]) {
    const { code, output } = folder.run('check', file);
    assert.equal(code, 1);
    const problems = matchProblems(output).map(({ message, ...rest }) => ({ ...rest, said: message.length > 0 }));
    assert.deepEqual(problems, [
      { file, line: '1', column: '1', severity: 'warning', code: 'DW390', said: true },
      { file, line: '2', column: '1', severity: 'error', code: 'DW102', said: true },
      { file, line: '3', column: '22', severity: 'warning', code: 'DW301', said: true },
    ]);
  }
});
