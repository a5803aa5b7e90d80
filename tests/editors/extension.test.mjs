import assert from 'node:assert/strict';
import { existsSync } from 'node:fs';
import { test } from 'node:test';

import { expansions, tabStops } from './snippet_text.mjs';
import { EXTENSION, commandTable, libraryNames, read, readJson } from './table.mjs';

const PACKAGE = readJson('package.json');
const SNIPPETS = Object.entries(readJson('snippets/dialwright.json'));
const NAMES = commandTable().map(({ name }) => name);
const sorted = (names) => [...names].sort();

function pathsIn(value) {
  if (typeof value === 'string') return value.startsWith('./') ? [value] : [];
  return value && typeof value === 'object' ? Object.values(value).flatMap(pathsIn) : [];
}

test('every path in package.json leads to JSON', () => {
  const paths = pathsIn(PACKAGE.contributes);
  assert.equal(paths.length, 3);
  for (const path of paths) {
    assert.ok(existsSync(new URL(path, EXTENSION)), path);
    assert.equal(typeof readJson(path), 'object', path);
  }
});

test('grammar, snippets and files are those of one language', () => {
  const { languages, grammars, snippets } = PACKAGE.contributes;
  const id = languages[0].id;
  assert.deepEqual([grammars[0].language, snippets[0].language], [id, id]);
  const grammar = readJson(grammars[0].path);
  assert.equal(grammar.scopeName, grammars[0].scopeName);
  assert.deepEqual(grammar.fileTypes.map((type) => `.${type}`), languages[0].extensions);
});

test('the extension has the version of the program', () => {
  assert.equal(PACKAGE.version, read('include/dialwright/dialwright.h').match(/VERSION_STRING "([\d.]+)"/)[1]);
});

test('library, table, grammar and snippets have the same 27 names', () => {
  const library = libraryNames();
  assert.equal(library.length, 27);
  const grammar = Object.values(readJson('syntaxes/dialwright.tmLanguage.json').repository)
    .map(({ begin }) => begin?.match(/Window\\\.\(\?:(.*?)\)\(/)?.[1])
    .filter(Boolean)
    .flatMap((names) => names.split('|').map((name) => `Window.${name.replaceAll('\\.', '.')}`));
  assert.deepEqual(NAMES, library);
  assert.deepEqual(SNIPPETS.map(([name]) => name), library);
  assert.deepEqual(sorted(grammar), sorted(library));
});

test('a snippet is found by the name of its command and writes it', () => {
  for (const [name, { prefix, body, description }] of SNIPPETS) {
    assert.equal(prefix, name);
    assert.equal(body.split(' ')[0], name);
    assert.match(description, /^[a-z]/);
    assert.doesNotMatch(description, /[*`|]|the same|see below/);
  }
});

test('tab stops go from left to right and end at the timeout', () => {
  for (const [, { body }] of SNIPPETS) {
    const stops = tabStops(body);
    assert.deepEqual(stops.map(({ number }) => number), stops.map((_, at) => at + 1), body);
    assert.deepEqual(stops.at(-1).texts, ['5000'], body);
    assert.ok(body.endsWith('}'), body);
  }
});

test('where an argument has few values they are choices', () => {
  const withChoices = SNIPPETS.filter(([, { body }]) => tabStops(body).some(({ texts }) => texts.length > 1));
  assert.deepEqual(withChoices.map(([name]) => name), NAMES.filter((name) => name.includes('SetCheckbox')));
  for (const [, { body }] of withChoices) {
    assert.deepEqual(expansions(body).map((line) => line.split(' ').at(-2)), ['1', '0']);
  }
});

test('a word of the editor is a token of the language', () => {
  const word = new RegExp(readJson('language-configuration.json').wordPattern, 'g');
  const words = 'Window.SetText.Path #32770 "Sign in" 2.1'.match(word);
  assert.deepEqual(words, ['Window.SetText.Path', '#32770', 'Sign', 'in', '2.1']);
});

test('the tasks in the README name the problem matcher and are JSON', () => {
  const blocks = [...read('README.md', EXTENSION).matchAll(/```json\n([\s\S]*?)```/g)];
  const tasks = blocks.flatMap(([, text]) => JSON.parse(text).tasks ?? []);
  assert.ok(tasks.length > 0);
  const matcher = PACKAGE.contributes.problemMatchers[0].name;
  for (const task of tasks) assert.equal(task.problemMatcher, `$${matcher}`);
});
