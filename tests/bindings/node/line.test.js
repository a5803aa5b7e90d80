'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { COMMANDS, hideTexts, literal, mask } = require('../../../bindings/node/line');
const { TABLE, write } = require('./table');

test('the binding has the commands of the table', () => {
    assert.deepEqual(Object.fromEntries(COMMANDS), TABLE.commands);
});

for (const entry of TABLE.lines) {
    test(`${entry.refused ? 'refused: ' : ''}${entry.name}`, () => {
        const isMeant = (error) => error instanceof RangeError && error.message.includes(entry.refused);
        if (entry.line) assert.equal(write(entry), entry.line);
        else assert.throws(() => write(entry), isMeant);
    });
}

test('patterns match one text', () => {
    for (const { text, pattern } of TABLE.patterns) assert.equal(literal(text), pattern);
});

test('masks hide what was typed', () => {
    for (const { line, masked } of TABLE.masked) assert.equal(mask(line), masked);
});

test('messages lose what was typed', () => {
    const script = 'Window.Close c t 5\n Window.SetText c t 1 "a \\"quoted\\" word" 5\nWindow.SetText c t 1 abc 5';
    const messages = ['Invalid: a "quoted" word', 'as written: a \\"quoted\\" word', 'abc'];
    assert.deepEqual(hideTexts(script, messages), ['Invalid: *****', 'as written: *****', 'abc']);
});
