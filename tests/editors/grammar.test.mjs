import assert from 'node:assert/strict';
import { test } from 'node:test';

import { refused, textsOf, tokenize } from './grammar.mjs';
import { commandTable } from './table.mjs';

const TABLE = commandTable();
const NAMES = new Set(TABLE.map(({ name }) => name));

const one = (line, scope) => {
  const texts = textsOf(line, scope);
  assert.equal(texts.length, 1, `${scope} in ${line}: ${JSON.stringify(texts)}`);
  return texts[0];
};

test('every example of the table is read in all its parts', () => {
  assert.equal(TABLE.length, 27);
  for (const { name, example } of TABLE) {
    assert.deepEqual(textsOf(example, 'invalid'), [], example);
    assert.equal(one(example, 'support.function'), name);
    assert.equal(one(example, 'string.class'), '"#32770"');
    assert.equal(one(example, 'string.title'), '"Dialwright practice"');
    assert.equal(one(example, 'constant.numeric.timeout'), '5000');
    const bare = tokenize(example).filter(({ text, scopes }) => text.trim() !== '' && scopes.length === 0);
    assert.deepEqual(bare, [], example);
  }
});

test('arguments are named for what they are', () => {
  const kinds = {
    'Window.SetText c t 1001 Ada 50': { id: '1001', text: 'Ada' },
    'Window.SetText.Path c t 2.1 Ada 50': { path: '2.1', text: 'Ada' },
    'Window.SelectDropdown.ByPosition.Value c t 1,2,3,4 8 "B b" 50': {
      rectangle: '1,2,3,4',
      tolerance: '8',
      item: '"B b"',
    },
    'Window.SelectDropdown.ByPath.Index c t 3 2 50': { path: '3', index: '2' },
    'Window.SetCheckbox c t 7 1 50': { id: '7', state: '1' },
    'Window.Move c t 1,-2 30,40 50': { position: '1,-2', size: '30,40' },
  };
  for (const [line, parts] of Object.entries(kinds)) {
    for (const [kind, text] of Object.entries({ ...parts, timeout: '50' })) {
      const scope = kind === 'text' || kind === 'item' ? `string.${kind}` : `constant.numeric.${kind}`;
      assert.equal(one(line, scope), text, line);
    }
  }
});

test('a family of commands has a scope of its own', () => {
  const families = {
    SetText: 'text',
    ClearText: 'text',
    ClickButton: 'button',
    SelectDropdown: 'dropdown',
    SelectRadio: 'radio',
    SetCheckbox: 'checkbox',
  };
  for (const { name, example } of TABLE) {
    const family = families[name.split('.')[1]] ?? 'window';
    assert.equal(one(example, `support.function.${family}`), name);
  }
});

test('a name is known if and only if the table has it', () => {
  const beginnings = new Set(TABLE.map(({ name }) => name.split('.').slice(0, 2).join('.')));
  const known = TABLE.map(({ name }) => name.replace(/^Window\.\w+/, ''));
  const endings = new Set(['.NonRegex.NonRegex', 's', ...known]);
  let unknown = 0;
  for (const beginning of beginnings) {
    for (const ending of endings) {
      const name = beginning + ending;
      assert.deepEqual(textsOf(`${name} c t`, 'invalid.illegal.command'), NAMES.has(name) ? [] : [name]);
      unknown += NAMES.has(name) ? 0 : 1;
    }
  }
  assert.ok(unknown > 100);
});

test('names that only look like commands are unknown', () => {
  const names = ['window.close', 'Window.close', 'Window', 'Close', 'Window.Close"c"', 'Windows.Close', '//', '"x"'];
  for (const name of names) assert.deepEqual(refused(`${name} c t 50`), [name]);
});

test('a name may stand in quotes and behind blanks', () => {
  const begun = ['"Window.Close" c t 50', '  Window.Close c t 50', '\t"Window.Close.NonRegex" c t 50', 'Window.Close'];
  for (const line of begun) {
    assert.deepEqual(refused(line), []);
    assert.equal(one(line, 'support.function'), 'Window.Close');
  }
});

test('.NonRegex is known behind every name', () => {
  for (const { name, example } of TABLE) {
    const line = example.replace(name, `${name}.NonRegex`);
    assert.deepEqual(textsOf(line, 'invalid'), [], line);
    assert.equal(one(line, 'storage.modifier.non-regex'), '.NonRegex');
  }
});

test('class and title are expressions, but for .NonRegex', () => {
  const rest = String.raw` #32770 "Save (As|it) \\(1\\) [a\\]b]+ .*" 50`;
  const line = `Window.Close${rest}`;
  assert.deepEqual(textsOf(line, 'punctuation.definition.group.regexp'), ['(', ')']);
  assert.deepEqual(textsOf(line, 'keyword.operator.or.regexp'), ['|']);
  assert.deepEqual(textsOf(line, 'constant.character.escape.regexp'), [String.raw`\\(`, String.raw`\\)`]);
  assert.deepEqual(textsOf(line, 'constant.other.character-class.set.regexp'), [String.raw`[a\\]b]`]);
  assert.deepEqual(textsOf(line, 'keyword.operator.quantifier.regexp'), ['+', '*']);
  const literal = tokenize(`Window.Close.NonRegex${rest}`).flatMap(({ scopes }) => scopes);
  assert.deepEqual(literal.filter((scope) => scope.includes('regexp')), []);
});

test('backslashes of an expression count by the rules of its token', () => {
  const escapes = (title) => textsOf(`Window.Close c ${title} 50`, 'constant.character.escape.regexp');
  const raw = String.raw;
  assert.deepEqual(escapes(raw`"a\(b"`), [raw`\(`]);
  assert.deepEqual(escapes(raw`"a\\\\b"`), [raw`\\\\`]);
  assert.deepEqual(escapes(raw`"a\\\"b"`), [raw`\\\"`]);
  assert.deepEqual(escapes(raw`"a\"(b)"`), []);
  assert.deepEqual(escapes(raw`a\\(b)`), [raw`\\`]);
  assert.deepEqual(escapes(raw`a\.b`), [raw`\.`]);
});

test('within quotes there are two escapes and no others', () => {
  const line = String.raw`Window.SetText c t 1 "say \"hi\" in C:\Temp\\x" 50`;
  assert.deepEqual(textsOf(line, 'constant.character.escape'), [String.raw`\"`, String.raw`\"`, String.raw`\\`]);
  assert.equal(one(line, 'string.quoted.double'), String.raw`"say \"hi\" in C:\Temp\\x"`);
  assert.equal(one(line, 'constant.numeric.timeout'), '50');
});

test('a token without quotes has no escapes, and quotes within it are nothing special', () => {
  const line = String.raw`Window.SetText c t 1 C:\\Temp"a 50`;
  assert.deepEqual(refused(line), []);
  assert.deepEqual(textsOf(line, 'constant.character.escape'), []);
  assert.equal(one(line, 'string.text'), String.raw`C:\\Temp"a`);
});

test('a quoted token ends at its quote, with or without a blank behind it', () => {
  const line = 'Window.SetText "c""t"1 "Ada"50';
  assert.deepEqual(refused(line), []);
  assert.equal(one(line, 'string.class'), '"c"');
  assert.equal(one(line, 'constant.numeric.id'), '1');
  assert.equal(one(line, 'constant.numeric.timeout'), '50');
});

test('a quote that nothing closes is invalid up to the next blank, where the token ends', () => {
  const opened = (line) => textsOf(line, 'invalid.illegal.open-quote');
  assert.deepEqual(opened('Window.Close c "Sign'), ['"Sign']);
  assert.deepEqual(opened(String.raw`Window.SetText c t 1 "C:\" 50`), [String.raw`"C:\"`]);
  assert.deepEqual(opened('Window.Close.NonRegex "c t'), ['"c']);
});

test('an empty argument is invalid', () => {
  for (const rest of ['Close "" t 50', 'Close.NonRegex c "" 50', 'SetText c t 1 "" 50', 'SetText c t "" x 50']) {
    assert.deepEqual(refused(`Window.${rest}`), ['""'], rest);
  }
});

test('what stands behind the timeout is invalid', () => {
  assert.deepEqual(refused('Window.Close c t 50 60 "seventy"'), ['60 "seventy"']);
  assert.deepEqual(refused('Window.Move c t 1,2 3,4 50 x'), ['x']);
});

test('a line that is still being written is coloured as far as it goes', () => {
  for (const { example } of TABLE) {
    const words = example.replace(/(?<=\w) (?=\w+")/g, '-').split(' ');
    for (let count = 1; count <= words.length; ++count) {
      assert.deepEqual(refused(words.slice(0, count).join(' ')), [], example);
    }
  }
});

test('a comment is a line that begins with a number sign', () => {
  for (const line of ['# Window.Nonsense "', ' \t# ${secret:X}', '#32770']) {
    assert.equal(one(line, 'comment.line.number-sign'), line);
    assert.deepEqual(refused(line), []);
  }
  for (const line of ['Window.Close #32770 t 50', 'Window.SetText c t 1 "a # b" 50']) {
    assert.deepEqual(textsOf(line, 'comment'), []);
    assert.deepEqual(refused(line), []);
  }
  assert.deepEqual(refused('Window.Close c t 50 # why'), ['# why']);
});

test('a placeholder is the whole text of a SetText command', () => {
  const placeholder = 'variable.other.placeholder';
  for (const text of ['${secret:PASSWORD}', '"${env:USER NAME}"', '${env:USER}']) {
    for (const where of ['SetText c t 1', 'SetText.Path c t 1', 'SetText.Position.NonRegex c t 1,2,3,4 8']) {
      const line = `Window.${where} ${text} 50`;
      assert.deepEqual(refused(line), []);
      assert.equal(one(line, placeholder), text);
      assert.equal(one(line, 'keyword.other.placeholder'), text.match(/env|secret/)[0]);
    }
  }
});

test('a placeholder anywhere else, or spelt otherwise, is invalid', () => {
  const misplaced = {
    'Window.SetText c t 1 "Hello ${env:USER}" 50': '${env:USER}',
    'Window.SetText c t 1 x${secret:A}y 50': '${secret:A}',
    'Window.SetText c t 1 ${ENV:USER} 50': '${ENV:USER}',
    'Window.SetText c "${env:USER}" 1 x 50': '${env:USER}',
    'Window.Close.NonRegex c ${secret:A} 50': '${secret:A}',
    'Window.SelectDropdown.Value c t 1 ${env:USER} 50': '${env:USER}',
    'Window.SetText c t ${env:ID} x 50': '${env:ID}',
  };
  for (const [line, text] of Object.entries(misplaced)) {
    assert.deepEqual(refused(line), [text], line);
    assert.deepEqual(textsOf(line, 'variable.other.placeholder'), [], line);
  }
});

test('a doubled dollar before a brace is an escape in a typed text', () => {
  const line = 'Window.SetText c t 1 "costs $${env:USER} and $5 {x}" 50';
  assert.deepEqual(refused(line), []);
  assert.deepEqual(textsOf(line, 'constant.character.escape'), ['$']);
});

test('values that the library cannot read are invalid in their place', () => {
  const wrong = {
    'Window.ClickButton c t OK 50': 'OK',
    'Window.ClickButton c t 7 soon': 'soon',
    'Window.ClickButton.Path c t 0.1 50': '0.1',
    'Window.ClickButton.Path c t 2..1 50': '2..1',
    'Window.SetCheckbox c t 7 2 50': '2',
    'Window.SetCheckbox c t 7 on 50': 'on',
    'Window.SelectDropdown.Index c t 7 -1 50': '-1',
    'Window.ClearText.Position c t 1,2,3 8 50': '1,2,3',
    'Window.ClearText.Position c t 1,2,3,4 -8 50': '-8',
    'Window.Move c t 1,2 3 50': '3',
    'Window.Move c t 1;2 3,4 50': '1;2',
    'Window.SetText c t 7 Ada Lovelace': 'Lovelace',
  };
  for (const [line, text] of Object.entries(wrong)) assert.deepEqual(refused(line), [text], line);
});

test('what is read, and hardly as it was meant, is no error', () => {
  const line = 'Window.ClickButton c t 12abc 5000ms';
  assert.deepEqual(refused(line), []);
  assert.deepEqual(textsOf(line, 'invalid.deprecated.ignored'), ['abc', 'ms']);
});

test('numbers may stand in quotes', () => {
  const rests = ['SetCheckbox c t "31" "1" "50"', 'Move c t "1, 2" " 3,4" "50"', 'SelectRadio.ByPath c t "2.1" 50'];
  for (const rest of rests) {
    assert.deepEqual(textsOf(`Window.${rest}`, 'invalid'), [], rest);
  }
});
