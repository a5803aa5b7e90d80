// Loads the grammar into the engine that VS Code has, or ends with 77 where that is not installed.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { join } from 'node:path';

import { readJson } from './table.mjs';

const modules = process.env.DIALWRIGHT_EDITOR_MODULES;
if (!modules) {
  console.log('skipped: DIALWRIGHT_EDITOR_MODULES does not say where the npm modules are; ./dev test does');
  process.exit(77);
}

const require = createRequire(join(modules, 'here.js'));
const oniguruma = require('vscode-oniguruma');
const { INITIAL, Registry, parseRawGrammar } = require('vscode-textmate');

await oniguruma.loadWASM(readFileSync(join(modules, 'vscode-oniguruma', 'release', 'onig.wasm')));
const registry = new Registry({
  onigLib: Promise.resolve({
    createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
    createOnigString: (text) => new oniguruma.OnigString(text),
  }),
  loadGrammar: async () =>
    parseRawGrammar(JSON.stringify(readJson('syntaxes/dialwright.tmLanguage.json')), 'grammar.json'),
});
const grammar = await registry.loadGrammar('source.dialwright');

/** [{ text, from, scopes }] of one line; scopes without the language's name, outermost first. */
export function tokenize(line) {
  const { tokens, ruleStack } = grammar.tokenizeLine(line, INITIAL);
  if (!ruleStack.equals(grammar.tokenizeLine('', INITIAL).ruleStack)) throw new Error(`nothing ends after: ${line}`);
  return tokens.map(({ startIndex, endIndex, scopes }) => ({
    text: line.slice(startIndex, endIndex),
    from: startIndex,
    scopes: scopes.slice(1).map((scope) => scope.replace(/\.dialwright$/, '')),
  }));
}

/** What a scope covers in a line: its stretches, joined where they touch. */
export function textsOf(line, scope) {
  const texts = [];
  let end = -1;
  for (const token of tokenize(line)) {
    if (!token.scopes.some((name) => name === scope || name.startsWith(`${scope}.`))) continue;
    if (token.from === end) texts[texts.length - 1] += token.text;
    else texts.push(token.text);
    end = token.from + token.text.length;
  }
  return texts;
}

export const refused = (line) => textsOf(line, 'invalid.illegal');
