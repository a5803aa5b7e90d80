// The commands, their examples and the extension, as they stand in the repository.
import { readFileSync } from 'node:fs';

const ROOT = new URL('../../', import.meta.url);
export const EXTENSION = new URL('editors/vscode/', ROOT);

export const read = (path, base = ROOT) => readFileSync(new URL(path, base), 'utf8');
export const readJson = (path, base = EXTENSION) => JSON.parse(read(path, base));

/** [{ name, example }], in the order of the table. */
export function commandTable() {
  const rows = [...read('docs/command_language.md').matchAll(/^\| `(Window\.[\w.]+)` .* `([^`]+)` \|$/gm)];
  return rows.map(([, name, example]) => ({ name, example }));
}

/** The names that the library itself has, in its order. */
export function libraryNames() {
  return [...read('src/language/commands.cpp').matchAll(/Command\(L"([^"]+)"/g)].map((match) => match[1]);
}
