// Runs dialwright.exe, the first word of the command line, on scripts in a folder of its own; the second word, where
// there is one, is what runs Windows programs.
import { spawnSync } from 'node:child_process';
import { closeSync, mkdtempSync, openSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const [tool, ...runner] = process.argv.slice(2);

export class Folder {
  path = mkdtempSync(join(tmpdir(), 'dialwright-editors-'));

  remove() {
    rmSync(this.path, { recursive: true });
  }

  write(name, lines) {
    writeFileSync(join(this.path, name), `${lines.join('\n')}\n`);
    return join(this.path, name);
  }

  /** { code, output, talk }; programs under Wine write to files more reliably than to pipes. */
  run(...words) {
    const files = ['output', 'talk'].map((name) => join(this.path, name));
    const handles = files.map((file) => openSync(file, 'w'));
    const [program, ...given] = [...runner, tool, ...words];
    const ended = spawnSync(program, given, { stdio: ['ignore', ...handles], timeout: 60_000 });
    handles.forEach(closeSync);
    if (ended.error) throw ended.error;
    const [output, talk] = files.map((file) => readFileSync(file, 'utf8'));
    return { code: ended.status, output, talk };
  }

  /** What check finds in these lines. */
  findings(lines) {
    const { code, output, talk } = this.run('check', '--format', 'json', this.write('lines.dialwright', lines));
    if (code !== 0 && code !== 1) throw new Error(`check ended with ${code}: ${talk}`);
    return JSON.parse(output).files[0].findings;
  }
}
