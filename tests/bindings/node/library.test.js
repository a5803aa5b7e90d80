'use strict';

const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { test } = require('node:test');
const { Worker } = require('node:worker_threads');
const { ErrorLog } = require('../../../bindings/node/error-log');
const dialwright = require('../../../bindings/node');
const { PRACTICE_TARGET, Practice, look, textOf } = require('./practice');
const { TABLE } = require('./table');

const { DialwrightError, command, execute, executeScript, launch, literal } = dialwright;
const DIALOG = '#32770';
const TITLE_OF_NOBODY = 'Nobody has this title';

function failureOf(call) {
    try {
        call();
    } catch (error) {
        assert.ok(error instanceof DialwrightError, error.stack);
        return error;
    }
    return assert.fail('it did not fail');
}

// Before any other: what is loaded stays.
test('a library for another processor is refused in words', () => {
    const file = path.join(os.tmpdir(), `arm64-${process.pid}.dll`);
    const content = fs.readFileSync(process.env.DIALWRIGHT_LIBRARY);
    content.writeUInt16LE(0xaa64, content.readUInt32LE(60) + 4);
    fs.writeFileSync(file, content);
    try {
        assert.throws(() => dialwright.load(file), /is for arm64, and this Node for x64 \(error 193\)/);
    } finally {
        fs.rmSync(file);
    }
});

test('every written line is valid to the library', () => {
    const lines = TABLE.lines.filter(({ line }) => line).map(({ line }) => line);
    assert.deepEqual(lines.filter((line) => !dialwright.validate(line)), []);
    assert.equal(dialwright.validateScript(lines.join('\n')), true);
    assert.equal(dialwright.validate('Window.SetText "#32770" t 12'), false);
    assert.equal(dialwright.validateScript(`${lines[0]}\nWindow.Clsoe c t`), false);
});

test('a zero character is refused, as the library would stop there', () => {
    assert.throws(() => dialwright.validate('Window.Close c t\0'), RangeError);
});

test('typed texts arrive as they were given', async (t) => {
    const practice = await Practice.open(t, 'Dialwright lines');
    const typed = TABLE.lines.filter((entry) => entry.typed);
    assert.ok(typed.length > 8);
    for (const entry of typed) {
        execute(command('Window.ClearText', DIALOG, practice.title, 12));
        execute(entry.line);
        assert.equal(textOf(practice.title, 12), entry.typed);
    }
});

test('the pattern of a title finds this very window', async (t) => {
    const practice = await Practice.open(t, 'Dialwright patterns');
    const titles = TABLE.patterns.map(({ text }) => text).filter((text) => text !== '');
    titles.forEach((title) => practice.tell(`open LiteralTest ${title}`));
    practice.tell('mark opened');
    await practice.said((line) => line === 'mark opened');
    const move = (title, i) => command('Window.Move', 'LiteralTest', literal(title), [10 * i, 5], [300, 200]);
    titles.map(move).forEach(execute);
    const left = new Map(look('windows').windows.map((window) => [window.title, window.frame.left]));
    assert.deepEqual(titles.map((title) => left.get(title)), titles.map((_, i) => 10 * i));
});

test('a window with a Japanese title and an emoji is driven', async (t) => {
    const practice = await Practice.open(t, 'サインイン 😀');
    executeScript([
        command('Window.SetText', DIALOG, literal(practice.title), 12, '日本 😀', { timeoutMs: 5000 }),
        command('Window.SetCheckbox', DIALOG, 'サインイン', 31, true, { timeoutMs: 5000, nonRegex: true }),
    ].join('\n'));
    assert.equal(textOf(practice.title, 12), '日本 😀');
    assert.match(await practice.said((line) => line.startsWith('sent 31 BM_SETCHECK')), / 1/);
});

test('a failure names its command and its reason, and nothing of an earlier one', async (t) => {
    const practice = await Practice.open(t, 'Dialwright failures');
    failureOf(() => execute(command('Window.Close', DIALOG, TITLE_OF_NOBODY, { timeoutMs: 20 })));
    const failure = failureOf(() => execute(command('Window.SetText', DIALOG, practice.title, 999, 'hunter22',
        { timeoutMs: 1000 })));
    assert.equal(failure.command, 'Window.SetText "#32770" "Dialwright failures" 999 "*****" 1000');
    // Once for each look.
    assert.deepEqual([...new Set(failure.lines)], ['Window::SetTextHelper: SetTextHelper - Null control handle']);
    assert.match(failure.message, /999.*\n.*Null control handle/);
});

test('a failing script names the line that failed', () => {
    const failing = command('Window.Close', DIALOG, TITLE_OF_NOBODY, { timeoutMs: 20 });
    const failure = failureOf(() => executeScript(`${failing}\n${failing}`));
    assert.equal(failure.command, `${failing}\n${failing}`);
    assert.match(failure.lines.at(0), /Window search failed after \d+ms/);
    assert.match(failure.lines.at(-1), /Invalid command: Window\.Close "#32770" "Nobody/);
});

test('a failure tells no typed text, not even of a line that the library shows', () => {
    const failure = failureOf(() => executeScript(' Window.SetText #32770 "Nobody has this title" 1 "hunter22" 20'));
    assert.equal(failure.command, ' Window.SetText #32770 "Nobody has this title" 1 "*****" 20');
    assert.match(failure.lines.at(-1), /Invalid command: {2}Window\.SetText.*\*{5}/);
    assert.doesNotMatch(failure.message, /hunter22/);
});

test('another thread has its own failures', async () => {
    const worker = new Worker(`
        const dialwright = require(${JSON.stringify(require.resolve('../../../bindings/node'))});
        const { parentPort } = require('node:worker_threads');
        dialwright.load();
        parentPort.once('message', (line) => {
            try { dialwright.execute(line); } catch (error) { parentPort.postMessage(error.lines); }
        });
        parentPort.postMessage('loaded');`, { eval: true });
    const answer = () => new Promise((resolve, reject) => worker.once('message', resolve).once('error', reject));
    assert.equal(await answer(), 'loaded');
    const others = answer();
    worker.postMessage(command('Window.ClickButton', DIALOG, TITLE_OF_NOBODY, 1, { timeoutMs: 150 }));
    const own = failureOf(() => execute(command('Window.Close', DIALOG, TITLE_OF_NOBODY, { timeoutMs: 300 })));
    assert.match(own.lines.join(), /^Window::Window: Window search failed after \d+ms,Window::CloseWindow: [^,]*$/);
    const lines = (await others).join();
    assert.match(lines, /^Window::Window: Window search failed after \d+ms/);
    assert.doesNotMatch(lines, /CloseWindow/);
    await worker.terminate();
});

test('a program is started, and its process ID told', async () => {
    const title = `Dialwright launched ${process.pid}`;
    const id = launch(PRACTICE_TARGET, `--title "${title}"`);
    execute(command('Window.Restore', DIALOG, literal(title), { timeoutMs: 10000 }));
    assert.equal(look('match', DIALOG, title).matches[0].processId, id);
    execute(command('Window.Close', DIALOG, literal(title)));
});

test('a program that is not there cannot be started, and its arguments are not told', () => {
    const failure = failureOf(() => launch('no-such-program.exe', 'hunter22'));
    assert.equal(failure.command, 'no-such-program.exe');
    assert.match(failure.lines.join(), /no-such-program/);
    assert.doesNotMatch(failure.message, /hunter22/);
});

test('a host whose trace cannot be written fails without lines', () => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'host-'));
    const host = path.join(folder, 'node.exe');
    const output = path.join(folder, 'output.txt');
    fs.copyFileSync(process.execPath, host);
    fs.writeFileSync(path.join(folder, 'logs'), 'a file where the folder should be');
    const script = `
        const dialwright = require(${JSON.stringify(require.resolve('../../../bindings/node'))});
        try { dialwright.execute('Window.Close c t 1'); } catch (error) {
            require('node:fs').writeFileSync(${JSON.stringify(output)}, JSON.stringify([error.command, error.lines]));
        }`;
    try {
        execFileSync(host, ['-e', script], { stdio: 'ignore' });
        assert.deepEqual(JSON.parse(fs.readFileSync(output, 'utf8')), ['Window.Close c t 1', []]);
    } finally {
        fs.rmSync(folder, { recursive: true });
    }
});

test('a file that was begun anew is read from its start', () => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'log-'));
    fs.mkdirSync(path.join(folder, 'logs', 'trace'), { recursive: true });
    const file = path.join(folder, 'logs', 'trace', 'x.exe_1_Dialwright_2_error.log');
    const line = (message) => `[2025-09-08 14:05:23.1234567 UTC+02:00] [7:9] [Dialwright  43   error] ${message}\r\n`;
    fs.writeFileSync(file, line('F: an old and long message') + line('F: another'));
    const log = new ErrorLog(path.join(folder, 'X.exe'), 7);
    const mark = log.mark();
    assert.deepEqual(log.linesSince(mark, 9), []);
    fs.writeFileSync(file, line(`F: new\n${' '.repeat(80)}goes on`));
    assert.deepEqual(log.linesSince(mark, 9), ['F: new\ngoes on']);
    assert.deepEqual(log.linesSince(mark, 8), []);
    fs.rmSync(folder, { recursive: true });
    assert.deepEqual(log.linesSince(mark, 9), []);
});
