'use strict';
// Scripts carried out by dialwright.exe, in another process: it says why a line failed, survives targets that hang, and
// leaves the event loop free.

const { spawn } = require('node:child_process');

/** `dialwright run` did not do what it should. `exitCode` and `report` (or undefined) are its own. */
class RunError extends Error {
    constructor(message, exitCode, report) {
        super(message);
        this.name = new.target.name;
        this.exitCode = exitCode;
        this.report = report;
    }
}

/** A line failed. `code` stays the same from version to version, see docs/tool.md. */
class LineFailed extends RunError {
    constructor(row, exitCode, report) {
        super(`${row.code}: ${row.reason} (line ${row.line}: ${row.text})`, exitCode, report);
        this.row = row;
        this.code = row.code;
        this.reason = row.reason;
        this.suggestion = row.suggestion;
    }
}

async function run(lines, { tool = 'dialwright.exe', secretFile, variables, options = [] } = {}) {
    const script = typeof lines === 'string' ? lines : lines.join('\n');
    const [program, ...start] = [tool].flat();
    const secrets = secretFile ? ['--secret-file', secretFile] : [];
    const { exitCode, output, said } = await finish(
        spawn(program, [...start, 'run', '--json', ...secrets, ...options, '-'], {
            env: { ...process.env, ...variables },
            windowsHide: true,
        }), script);
    return rows(exitCode, output, said.trim() || `dialwright run ended with ${exitCode}`);
}

function finish(child, input) {
    return new Promise((resolve, reject) => {
        const output = collect(child.stdout);
        const said = collect(child.stderr);
        child.on('error', reject);
        child.on('close', (exitCode) => resolve({ exitCode, output: output(), said: said() }));
        // A tool that refuses its options does not read; what it says then is the reason.
        child.stdin.on('error', () => {});
        child.stdin.end(input);
    });
}

function collect(stream) {
    const chunks = [];
    stream.on('data', (chunk) => chunks.push(chunk));
    return () => Buffer.concat(chunks).toString('utf8');
}

function rows(exitCode, output, said) {
    let report;
    try {
        report = JSON.parse(output);
    } catch {
        throw new RunError(said, exitCode);
    }
    const all = report.files.flatMap((file) => file.lines);
    const failed = all.find((row) => row.status === 'failed');
    if (failed) throw new LineFailed(failed, exitCode, report);
    if (exitCode !== 0) throw new RunError(said, exitCode, report);
    return all;
}

module.exports = { LineFailed, RunError, run };
