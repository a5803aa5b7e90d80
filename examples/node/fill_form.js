'use strict';
// Starts the practice target, fills in its form, and shows why a line fails.
// node fill_form.js FOLDER     where Dialwright.dll, dialwright.exe and practice_target.exe are

const path = require('node:path');
const dialwright = require('../../bindings/node');

const { command, environment, execute, launch, literal, run } = dialwright;
const DIALOG = '#32770';
const title = 'Form (Node)';

async function main(folder) {
    dialwright.load(path.join(folder, 'Dialwright.dll'));
    const processId = launch(`"${path.join(folder, 'practice_target.exe')}"`, `--title "${title}"`);

    // Within this process: short, but the event loop stands still meanwhile.
    execute(command('Window.SetText', DIALOG, literal(title), 12, 'Ada Lovelace', { timeoutMs: 5000 }));
    execute(command('Window.SetCheckbox', DIALOG, literal(title), 31, true, { timeoutMs: 5000 }));

    // By dialwright.exe: it keeps secrets, and says why a line failed.
    const tool = path.join(folder, 'dialwright.exe');
    const form = [
        command('Window.SetText', DIALOG, title, 14, environment('FORM_PASSWORD'), { nonRegex: true }),
        command('Window.SelectDropdown.Value', DIALOG, literal(title), 51, 'Beta', { timeoutMs: 5000 }),
        command('Window.ClickButton', DIALOG, literal(title), 4711, { timeoutMs: 1000 }),
    ];
    try {
        await run(form, { tool, variables: { FORM_PASSWORD: 'correct horse' } });
    } catch (error) {
        if (!(error instanceof dialwright.LineFailed)) throw error;
        console.error(`process ${processId}: ${error.message}\n    ${error.suggestion}`);
    }
    execute(command('Window.Close', DIALOG, literal(title)));
}

main(path.resolve(process.argv[2] ?? '.'));
