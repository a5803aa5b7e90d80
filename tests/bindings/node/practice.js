'use strict';
// The practice target in a process of its own, and what the tool beside it sees of windows.

const { execFileSync, spawn } = require('node:child_process');
const path = require('node:path');
const readline = require('node:readline');

const PROGRAMS = process.env.DIALWRIGHT_PROGRAMS;
const TOOL = path.join(PROGRAMS, 'dialwright.exe');
const PRACTICE_TARGET = path.join(PROGRAMS, 'practice_target.exe');

class Practice {
    #child;
    #lines = [];
    #waiting = [];

    constructor(title) {
        this.title = title;
        this.#child = spawn(PRACTICE_TARGET, ['--commands', '--title', title], { stdio: ['pipe', 'pipe', 'ignore'] });
        readline.createInterface({ input: this.#child.stdout }).on('line', (line) => this.#hear(line));
    }

    /** Open until the test ends, however it ends. */
    static async open(test, title) {
        const practice = new Practice(title);
        test.after(() => practice.close());
        await practice.said((line) => line.startsWith('ready '));
        return practice;
    }

    tell(command) {
        this.#child.stdin.write(`${command}\n`);
    }

    /** The first line, of those said already and those to come, that is meant. */
    said(isMeant) {
        const found = this.#lines.find(isMeant);
        if (found !== undefined) return Promise.resolve(found);
        return new Promise((resolve) => this.#waiting.push({ isMeant, resolve }));
    }

    async close() {
        const ended = new Promise((resolve) => this.#child.on('close', resolve));
        this.#child.stdin.end();
        await ended;
    }

    #hear(line) {
        this.#lines.push(line);
        this.#waiting = this.#waiting.filter(({ isMeant, resolve }) => !isMeant(line) || resolve(line));
    }
}

function look(...options) {
    return JSON.parse(execFileSync(TOOL, [...options, '--json'], { encoding: 'utf8', maxBuffer: 1 << 26 }));
}

/** The text of the first control that has this ID. */
function textOf(title, id) {
    const { literal } = require('../../../bindings/node/line');
    return look('inspect', '#32770', literal(title)).controls.find((control) => control.id === id).text;
}

module.exports = { PRACTICE_TARGET, Practice, TOOL, look, textOf };
