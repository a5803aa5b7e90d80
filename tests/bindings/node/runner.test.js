'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { test } = require('node:test');
const dialwright = require('../../../bindings/node');
const { Practice, TOOL, look, textOf } = require('./practice');

const { LineFailed, RunError, command, environment, run, secret } = dialwright;
const DIALOG = '#32770';

test('the runner tells how each line went', async (t) => {
    const practice = await Practice.open(t, 'Läufer 😀');
    const rows = await run([
        command('Window.ClearText', DIALOG, practice.title, 15, { timeoutMs: 5000 }),
        command('Window.SetText', DIALOG, practice.title, 15, '日本 😀', { timeoutMs: 5000 }),
    ], { tool: TOOL });
    assert.deepEqual(rows.map(({ line, status }) => [line, status]), [[1, 'ok'], [2, 'ok']]);
    assert.equal(textOf(practice.title, 15), '日本 😀');
});

test('the runner says why a line failed, and which were not run', async (t) => {
    const practice = await Practice.open(t, 'Dialwright runner');
    const missing = command('Window.SetText', DIALOG, practice.title, 999, 'hunter22', { timeoutMs: 1000 });
    const failure = await run([missing, missing], { tool: TOOL }).catch((error) => error);
    assert.ok(failure instanceof LineFailed, failure);
    assert.equal(failure.code, 'control_not_found');
    assert.match(failure.message, /^control_not_found: .*\(line 1: Window\.SetText .*"\*{5}" 1000\)$/);
    assert.match(failure.suggestion, /IDs that exist/);
    assert.deepEqual(failure.report.files[0].lines.map(({ status }) => status), ['failed', 'skipped']);
    assert.doesNotMatch(JSON.stringify(failure.report), /hunter22/);
});

test('secrets come from a file and from variables, and are not told', async (t) => {
    const practice = await Practice.open(t, 'Dialwright secrets');
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'secrets-'));
    const secretFile = path.join(folder, 'secrets.txt');
    fs.writeFileSync(secretFile, 'PASSWORD=correct "horse" \\ 馬\n');
    const rows = await run([
        command('Window.SetText', DIALOG, practice.title, 12, secret('PASSWORD')),
        command('Window.SetText', DIALOG, practice.title, 70, environment('DIALWRIGHT_TEST_PIN')),
    ], { tool: TOOL, secretFile, variables: { DIALWRIGHT_TEST_PIN: '4711 ü' } });
    assert.equal(textOf(practice.title, 12), 'correct "horse" \\ 馬');
    assert.match(textOf(practice.title, 70), /4711 ü/);
    assert.doesNotMatch(JSON.stringify(rows), /horse|4711/);
    fs.rmSync(folder, { recursive: true });
});

test('a script that the check refuses is not begun', async () => {
    const failure = await run('Window.Clsoe c t 5', { tool: TOOL }).catch((error) => error);
    assert.ok(failure instanceof RunError && !(failure instanceof LineFailed), failure);
    assert.equal(failure.exitCode, 2);
    assert.match(failure.message, /DW102/);
});

test('a program that cannot be launched is an error, though no line has failed', async () => {
    const options = ['--launch', 'no-such-program.exe'];
    const failure = await run('Window.Close c t 5', { tool: TOOL, options }).catch((error) => error);
    assert.ok(failure instanceof RunError && !(failure instanceof LineFailed), failure);
    assert.equal(failure.exitCode, 3);
    assert.match(failure.message, /launch_failed/);
    assert.equal(failure.report.skipped, 1);
});

test('options reach the tool', async () => {
    const rows = await run('Window.Close c t 5', { tool: [TOOL], options: ['--dry-run'] });
    assert.deepEqual(rows.map(({ status }) => status), ['planned']);
});

test('a tool that is not there is an error', async () => {
    await assert.rejects(run('Window.Close c t 5', { tool: 'no-such-tool.exe' }), { code: 'ENOENT' });
});

test('the event loop goes on while the runner works', async () => {
    let turns = 0;
    const ticking = setInterval(() => { turns += 1; }, 10);
    const slow = command('Window.Close', 'NoSuchClass', 'x', { timeoutMs: 200 });
    await assert.rejects(run(slow, { tool: TOOL }), LineFailed);
    clearInterval(ticking);
    assert.ok(turns > 2, `${turns} turns`);
});
