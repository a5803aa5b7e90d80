'use strict';
// Dialwright.dll within this process. Every call blocks the whole event loop until it returns.

const fs = require('node:fs');
const path = require('node:path');
const { ErrorLog } = require('./error-log');
const { hideTexts, mask } = require('./line');

const FOLDERS = { x64: 'win-x64', arm64: 'win-arm64' };
const MACHINES = { 0x8664: 'x64', 0xaa64: 'arm64', 0x014c: 'ia32' };

/** A call of the library has failed. */
class DialwrightError extends Error {
    /**
     * @param {string} command the line or script, with its typed texts hidden; of a launch the program alone
     * @param {string[]} lines what the library wrote into its error file meanwhile
     */
    constructor(command, lines) {
        super([`failed: ${command}`, ...lines].join('\n    '));
        this.name = 'DialwrightError';
        this.command = command;
        this.lines = lines;
    }
}

let loaded;

/**
 * Loads the library, at the first call only, and keeps it. Every function here does so by itself. Without a path: the
 * one that DIALWRIGHT_LIBRARY names, or native/win-x64 or native/win-arm64 beside this file.
 */
function load(file) {
    loaded ??= open(libraryPath(file));
}

function libraryPath(file) {
    const named = file ?? process.env.DIALWRIGHT_LIBRARY;
    if (named) return path.resolve(named);
    const folder = FOLDERS[process.arch];
    if (!folder) throw new Error(`Dialwright is for x64 and arm64; this Node is for ${process.arch}`);
    return path.join(__dirname, 'native', folder, 'Dialwright.dll');
}

function validate(line) {
    return library().ValidateCommand(text(line)) === 1;
}

function validateScript(script) {
    return library().ValidateScript(text(script)) === 1;
}

function execute(line) {
    call(mask(line), line, (functions) => functions.ExecuteCommand(text(line)));
}

function executeScript(script) {
    call(mask(script), script, (functions) => functions.ExecuteScript(text(script)));
}

function launch(program, programArguments = '') {
    const processId = [0];
    call(program, '', (functions) => functions.ProgramLaunch(text(program), text(programArguments), processId));
    return processId[0];
}

function library() {
    load();
    return loaded;
}

function text(value) {
    if (typeof value !== 'string') throw new TypeError('a text is wanted');
    if (value.includes('\0')) {
        throw new RangeError('the text holds a zero character, at which the library stops reading');
    }
    return value;
}

function call(command, script, run) {
    const functions = library();
    const log = new ErrorLog(process.execPath, process.pid);
    const before = log.mark();
    if (run(functions) === 1) return;
    throw new DialwrightError(command, hideTexts(script, log.linesSince(before, functions.GetCurrentThreadId())));
}

function open(file) {
    if (process.platform !== 'win32') throw new Error('Dialwright.dll is loaded by Node for Windows only');
    const machine = machineOf(file);
    if (machine !== process.arch) {
        throw new Error(`${file} is for ${machine}, and this Node for ${process.arch} (error 193)`);
    }
    const koffi = require('koffi');
    const dll = koffi.load(file);
    const functions = { GetCurrentThreadId: koffi.load('kernel32.dll').func('uint32_t GetCurrentThreadId()') };
    for (const name of ['ValidateCommand', 'ValidateScript', 'ExecuteCommand', 'ExecuteScript']) {
        functions[name] = dll.func(`int ${name}(str16 text)`);
    }
    const launching = 'int ProgramLaunch(str16 program, str16 arguments, _Out_ uint32_t *processId)';
    functions.ProgramLaunch = dll.func(launching);
    return functions;
}

/** The processor that a program file is for. The message of the system for a wrong one depends on its language. */
function machineOf(file) {
    const content = fs.readFileSync(file);
    const header = content.length >= 64 ? content.readUInt32LE(60) : content.length;
    if (header + 6 > content.length) throw new Error(`${file} is no library (error 193)`);
    const machine = content.readUInt16LE(header + 4);
    return MACHINES[machine] ?? `machine ${machine}`;
}

module.exports = { DialwrightError, execute, executeScript, launch, libraryPath, load, validate, validateScript };
