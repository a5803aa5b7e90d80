'use strict';
// The table of lines that every binding must write.

const fs = require('node:fs');
const path = require('node:path');
const { command, environment, secret } = require('../../../bindings/node/line');

const TABLE = JSON.parse(fs.readFileSync(path.join(__dirname, '..', 'lines.json'), 'utf8'));
const KINDS = { secret, environment };

function argument(value) {
    if (value === null || typeof value !== 'object' || Array.isArray(value)) return value;
    const [[kind, name]] = Object.entries(value);
    return KINDS[kind](name);
}

function write(entry) {
    const options = { timeoutMs: entry.timeoutMs, nonRegex: entry.nonRegex };
    return command(entry.command, entry.class, entry.title, ...entry.arguments.map(argument), options);
}

module.exports = { TABLE, write };
