export type CommandName =
    | 'Window.SetText' | 'Window.SetText.Path' | 'Window.SetText.Position'
    | 'Window.ClickButton' | 'Window.ClickButton.Path' | 'Window.ClickButton.Position'
    | 'Window.SelectDropdown.Value' | 'Window.SelectDropdown.Index'
    | 'Window.SelectDropdown.ByPath.Value' | 'Window.SelectDropdown.ByPath.Index'
    | 'Window.SelectDropdown.ByPosition.Value' | 'Window.SelectDropdown.ByPosition.Index'
    | 'Window.ClearText' | 'Window.ClearText.Path' | 'Window.ClearText.Position'
    | 'Window.Move' | 'Window.BringToFront' | 'Window.Minimize' | 'Window.Maximize' | 'Window.Restore' | 'Window.Close'
    | 'Window.SelectRadio' | 'Window.SelectRadio.ByPath' | 'Window.SelectRadio.ByPosition'
    | 'Window.SetCheckbox' | 'Window.SetCheckbox.ByPath' | 'Window.SetCheckbox.ByPosition';

/** A text that `dialwright run` fills in; made by `secret` or `environment`. */
export class Secret {
    private constructor();
    readonly reference: string;
}

/** A text, a whole number, the state of a check box, or the numbers of a rectangle, a position or a size. */
export type Argument = string | number | boolean | readonly number[] | Secret;

export interface CommandOptions {
    /** Milliseconds; 10,000 where it is left out, -1 for ever. */
    timeoutMs?: number;
    /** Compares class and title literally. */
    nonRegex?: boolean;
}

/**
 * The line of a command; its options, where there are any, stand last. Class and title are expressions, see `literal`.
 * Throws RangeError for what cannot be written.
 */
export function command(
    name: CommandName | `${CommandName}.NonRegex`,
    windowClass: string,
    title: string,
    ...argumentsAndOptions: (Argument | CommandOptions)[]
): string;

/** An expression that matches this very text, whatever its case; any text for an empty one. */
export function literal(text: string): string;

/** The text that the runner's secret file has under this name. */
export function secret(name: string): Secret;

/** The text that the runner finds in its environment under this name. */
export function environment(name: string): Secret;

/** The same lines with ***** for typed texts, and for all that stands in a line that is no valid command. */
export function mask(script: string): string;

/** A call of the library has failed. */
export class DialwrightError extends Error {
    /** The line or script, with its typed texts hidden; of a launch the program alone. */
    readonly command: string;
    /** What the library wrote into its error file meanwhile; empty where that cannot be read. */
    readonly lines: string[];
}

/**
 * Loads the library, at the first call only, and keeps it. The functions below do so by themselves. Without a path: the
 * one that DIALWRIGHT_LIBRARY names, or the one in native/win-x64 or native/win-arm64 of this package.
 */
export function load(file?: string): void;

/** Whether the shape of a line is right. Touches no window. */
export function validate(line: string): boolean;

/** Whether the shape of every line is right. Touches no window. */
export function validateScript(script: string): boolean;

/** Carries out one line. Blocks the event loop until it is done; throws DialwrightError where it fails. */
export function execute(line: string): void;

/** Carries out a script up to the first line that fails, and throws DialwrightError there. Blocks the event loop. */
export function executeScript(script: string): void;

/** Starts a program, without waiting for it. Its process ID. */
export function launch(program: string, programArguments?: string): number;

export interface Row {
    line: number;
    /** The line with its typed text masked. */
    text: string;
    status: 'ok' | 'failed' | 'skipped' | 'planned';
    milliseconds: number;
    note?: string;
    code?: string;
    reason?: string;
    suggestion?: string;
    files?: string[];
    /** What the library said. */
    messages: string[];
}

export interface Report {
    schema: 1;
    exitCode: number;
    done: number;
    failed: number;
    skipped: number;
    traceFolder: string;
    traceMayBeMissing: boolean;
    files: { file: string; lines: Row[] }[];
}

/** `dialwright run` did not do what it should. */
export class RunError extends Error {
    readonly exitCode: number;
    readonly report?: Report;
}

/** A line failed. */
export class LineFailed extends RunError {
    readonly row: Row;
    /** Stays the same from version to version, such as `control_not_found`. */
    readonly code: string;
    readonly reason: string;
    readonly suggestion: string;
}

export interface RunOptions {
    /** The path of dialwright.exe, or a list that begins a command line. */
    tool?: string | readonly string[];
    /** With lines NAME=VALUE, for texts made by `secret`. */
    secretFile?: string;
    /** Added to the environment of dialwright.exe, for texts made by `environment`. */
    variables?: Record<string, string>;
    /** More options of `dialwright run`. */
    options?: readonly string[];
}

/** Carries out lines, or a whole script, by dialwright.exe. Rejects with LineFailed at the first that failed. */
export function run(lines: string | readonly string[], options?: RunOptions): Promise<Row[]>;
