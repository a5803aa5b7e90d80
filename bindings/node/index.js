'use strict';
// Dialwright for Node: `command` writes a line, `execute` or `run` carries it out.

const { Secret, command, environment, literal, mask, secret } = require('./line');
const { DialwrightError, execute, executeScript, launch, load, validate, validateScript } = require('./library');
const { LineFailed, RunError, run } = require('./runner');

module.exports = {
    DialwrightError,
    LineFailed,
    RunError,
    Secret,
    command,
    environment,
    execute,
    executeScript,
    launch,
    literal,
    load,
    mask,
    run,
    secret,
    validate,
    validateScript,
};
