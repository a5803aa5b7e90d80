'use strict';
// What the library wrote into its error file while a call ran.

const fs = require('node:fs');
const path = require('node:path');

const RECORD = /^\[[^\]]*\] \[(\d+):(\d+)\] \[Dialwright +\d+ +error\] ([^]*)$/;
const CONTINUED = ' '.repeat(80);

/** The error files of one host, whose program lies in `host`, and of one of its processes. */
class ErrorLog {
    #folder;
    #host;
    #process;

    constructor(host, processId) {
        this.#folder = path.join(path.dirname(host), 'logs', 'trace');
        this.#host = path.basename(host).toLowerCase();
        this.#process = String(processId);
    }

    /** How far the files go now; for `linesSince`. */
    mark() {
        return new Map(this.#files().map((file) => [file, sizeOf(file)]));
    }

    /** The messages that this thread has added. Empty where nothing can be read. */
    linesSince(mark, threadId) {
        return this.#files().flatMap((file) => this.#messages(readFrom(file, mark.get(file) ?? 0), String(threadId)));
    }

    #files() {
        try {
            return fs.readdirSync(this.#folder).filter((name) => this.#isOurs(name.toLowerCase())).sort()
                .map((name) => path.join(this.#folder, name));
        } catch {
            return [];
        }
    }

    /** The number between the host's name and ours is the session. */
    #isOurs(name) {
        return name.startsWith(this.#host) && /^_\d+_dialwright_[12]_error\.log$/.test(name.slice(this.#host.length));
    }

    #messages(content, thread) {
        const records = [];
        for (const piece of content.split('\r\n')) {
            if (piece.startsWith(CONTINUED) && records.length > 0) records.push(`${records.pop()}\n${piece}`);
            else records.push(piece);
        }
        return records.map((record) => RECORD.exec(record))
            .filter((match) => match?.[1] === this.#process && match[2] === thread)
            .map((match) => match[3].replaceAll(`\n${CONTINUED}`, '\n'));
    }
}

function sizeOf(file) {
    try {
        return fs.statSync(file).size;
    } catch {
        return 0;
    }
}

function readFrom(file, offset) {
    let descriptor;
    try {
        descriptor = fs.openSync(file, 'r');
        const size = fs.fstatSync(descriptor).size;
        // A file that became shorter was begun anew.
        const start = offset <= size ? offset : 0;
        const content = Buffer.alloc(size - start);
        return content.toString('utf8', 0, fs.readSync(descriptor, content, 0, content.length, start));
    } catch {
        return '';
    } finally {
        if (descriptor !== undefined) fs.closeSync(descriptor);
    }
}

module.exports = { ErrorLog };
