'use strict';
// Parses the PowerShell binding with a grammar of the language, as there is no PowerShell here; it is not run.
// What can be told without running: that each function is exported, has an approved verb and whole help, and that the
// sources which the module compiles are there. node powershell_test.js ROOT

const assert = require('node:assert/strict');
const fs = require('node:fs');
const { createRequire } = require('node:module');
const path = require('node:path');

const ROOT = process.argv[2];
const MODULES = process.env.DIALWRIGHT_BINDING_MODULES;
const MODULE = path.join(ROOT, 'bindings/powershell/Dialwright');
const SKIPPED = 77;
const PARAMETER = /\[[\w[\]]+\] \$(\w+)(?= = |,\n|\n {4}\)|\)\n)/g;
const VERBS = ['ConvertTo', 'Invoke', 'New', 'Start', 'Test'];

function parserOf(language, Parser) {
    const parser = new Parser();
    parser.setLanguage(language);
    return (text) => parser.parse(text).rootNode;
}

function errorsIn(node) {
    if (node.type === 'ERROR' || node.isMissing) return [`${node.startPosition.row + 1}: ${node.text.slice(0, 60)}`];
    return node.hasError ? node.children.flatMap(errorsIn) : [];
}

function checkFiles(parse) {
    // A grammar that takes anything would prove nothing.
    assert.notDeepEqual(errorsIn(parse('function A { if ($b) { "c" }')), []);
    const files = [path.join(MODULE, 'Dialwright.psm1'), path.join(MODULE, 'Dialwright.psd1'),
        path.join(ROOT, 'examples/powershell/Fill-Form.ps1')];
    for (const file of files) {
        const text = fs.readFileSync(file, 'utf8');
        assert.deepEqual(errorsIn(parse(text)), [], file);
    }
    return files.map((file) => fs.readFileSync(file, 'utf8'));
}

/** Each public function with the help before it and the parameters within. */
function functionsOf(module) {
    const pattern = /<#\n([^]*?)\n#>\nfunction (\S+) \{\n([^]*?)\n\}\n/g;
    return [...module.matchAll(pattern)].map(([, help, name, body]) => ({
        name,
        help,
        parameters: [...body.matchAll(PARAMETER)].map(([, parameter]) => parameter),
    }));
}

function checkFunctions(module, manifest, commands) {
    const functions = functionsOf(module);
    const names = functions.map(({ name }) => name);
    const exported = manifest.match(/FunctionsToExport = @\(([^)]*)\)/)[1].match(/[\w-]+/g);
    assert.deepEqual(names, exported);
    for (const { name, help, parameters } of functions) {
        assert.ok(VERBS.includes(name.split('-')[0]), name);
        assert.match(help, /^\.SYNOPSIS\n\S/, name);
        assert.match(help, /\n\.EXAMPLE\n\S/, name);
        assert.deepEqual([...help.matchAll(/\.PARAMETER (\w+)/g)].map(([, parameter]) => parameter), parameters, name);
        assert.ok(parameters.length > 0, name);
    }
    for (const used of commands.match(/\b[A-Z]\w+-Dialwright\w*/g)) assert.ok(names.includes(used), used);
}

function checkSources(module) {
    const sources = module.match(/^\$sources = (.*)$/m)[1].match(/\w+\.cs/g);
    assert.ok(sources.includes('Library.cs'));
    for (const source of sources) assert.ok(fs.existsSync(path.join(ROOT, 'bindings/csharp', source)), source);
}

async function main() {
    if (!MODULES) {
        console.log('skipped: DIALWRIGHT_BINDING_MODULES does not name the modules of tests/bindings/package.json');
        return SKIPPED;
    }
    const { Language, Parser } = createRequire(path.join(MODULES, 'here.js'))('web-tree-sitter');
    await Parser.init();
    const grammar = path.join(MODULES, 'tree-sitter-powershell', 'tree-sitter-powershell.wasm');
    const [module, manifest, example] = checkFiles(parserOf(await Language.load(grammar), Parser));
    checkFunctions(module, manifest, example);
    checkSources(module);
    return 0;
}

main().then((code) => { process.exitCode = code; }, (error) => {
    console.error(error);
    process.exitCode = 1;
});
