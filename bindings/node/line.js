'use strict';
// Command lines of Dialwright: written from values, and with their typed text hidden.

const DEFAULT_TIMEOUT_MS = 10000;
const LONGEST_TIMEOUT_MS = 2147483647;
const MASK = '*****';
const SUFFIX = '.NonRegex';
const TEXT_COMMAND = 'Window.SetText';

// How many arguments stand behind class and title.
const COMMANDS = new Map([
    ['Window.SetText', 2],
    ['Window.SetText.Path', 2],
    ['Window.SetText.Position', 3],
    ['Window.ClickButton', 1],
    ['Window.ClickButton.Path', 1],
    ['Window.ClickButton.Position', 2],
    ['Window.SelectDropdown.Value', 2],
    ['Window.SelectDropdown.Index', 2],
    ['Window.SelectDropdown.ByPath.Value', 2],
    ['Window.SelectDropdown.ByPath.Index', 2],
    ['Window.SelectDropdown.ByPosition.Value', 3],
    ['Window.SelectDropdown.ByPosition.Index', 3],
    ['Window.ClearText', 1],
    ['Window.ClearText.Path', 1],
    ['Window.ClearText.Position', 2],
    ['Window.Move', 2],
    ['Window.BringToFront', 0],
    ['Window.Minimize', 0],
    ['Window.Maximize', 0],
    ['Window.Restore', 0],
    ['Window.Close', 0],
    ['Window.SelectRadio', 1],
    ['Window.SelectRadio.ByPath', 1],
    ['Window.SelectRadio.ByPosition', 2],
    ['Window.SetCheckbox', 2],
    ['Window.SetCheckbox.ByPath', 2],
    ['Window.SetCheckbox.ByPosition', 3],
]);

// As the library reads a line: what is white space to it is ASCII.
const TOKEN = /"((?:[^"\\]|\\.)*)"|([^ \t\n\v\f\r]+)/g;
const REFERENCE = /\$\{(?:env|secret):|\$\$\{/i;

/** A text that `dialwright run` fills in; make it with `secret` or `environment`. */
class Secret {
    constructor(kind, name) {
        if (!/^[A-Za-z0-9_]+$/.test(name)) {
            throw new RangeError(`${JSON.stringify(name)} is no name of a secret: letters, digits and _`);
        }
        this.reference = `\${${kind}:${name}}`;
    }
}

const secret = (name) => new Secret('secret', name);
const environment = (name) => new Secret('env', name);

const literal = (text) => text.replace(/[\\^$.|?*+()[\]{}]/g, '\\$&') || '.*';

function command(name, windowClass, title, ...rest) {
    const { timeoutMs = DEFAULT_TIMEOUT_MS, nonRegex = false } = isOptions(rest.at(-1)) ? rest.pop() : {};
    const fullName = name + (nonRegex ? SUFFIX : '');
    const base = withoutSuffix(fullName);
    const count = COMMANDS.get(base);
    if (count === undefined) throw new RangeError(`no command has this name: ${fullName}`);
    if (rest.length !== count) {
        throw new RangeError(`${base} takes ${count} arguments behind class and title, not ${rest.length}`);
    }
    const tokens = rest.map((argument, i) => {
        const takesText = base.startsWith(TEXT_COMMAND) && i === count - 1;
        return token(`argument ${i + 1}`, argument, takesText);
    });
    return [fullName, quoted('the class', windowClass), quoted('the title', title), ...tokens, timeout(timeoutMs)]
        .join(' ');
}

/** The same lines with ***** for typed texts, and for all that stands in a line that is no valid command. */
function mask(script) {
    return script.split('\n').map(maskLine).join('\n');
}

/** The messages with ***** wherever they hold a typed text of the script; one below four characters stays. */
function hideTexts(script, messages) {
    const texts = script.split('\n').flatMap(hiddenForms).filter((text) => text.length >= 4);
    texts.sort((one, other) => other.length - one.length);
    return messages.map((message) => texts.reduce((shown, text) => shown.replaceAll(text, MASK), message));
}

function isOptions(value) {
    return typeof value === 'object' && value !== null && !Array.isArray(value) && !(value instanceof Secret);
}

function withoutSuffix(name) {
    return name.endsWith(SUFFIX) ? name.slice(0, -SUFFIX.length) : name;
}

function timeout(milliseconds) {
    const fits = Number.isInteger(milliseconds) && milliseconds >= 1 && milliseconds <= LONGEST_TIMEOUT_MS;
    if (fits || milliseconds === -1) return String(milliseconds);
    throw new RangeError(`the timeout must be -1 or 1 to ${LONGEST_TIMEOUT_MS} milliseconds`);
}

function token(what, argument, takesText) {
    if (argument instanceof Secret) {
        if (takesText) return argument.reference;
        throw new RangeError(`${what}: a secret can only be the text of a Window.SetText command`);
    }
    if (typeof argument === 'boolean') return argument ? '1' : '0';
    if (Number.isSafeInteger(argument)) return String(argument);
    if (Array.isArray(argument)) return numbers(what, argument);
    if (takesText && REFERENCE.test(argument)) throw new RangeError(`${what} would be a reference to the runner`);
    return quoted(what, argument);
}

function numbers(what, values) {
    if (values.length === 0) throw new RangeError(`${what} is empty`);
    if (values.every(Number.isSafeInteger)) return values.join(',');
    throw new RangeError(`${what} is neither a text nor a whole number, nor a list of whole numbers`);
}

function quoted(what, text) {
    if (typeof text !== 'string') throw new RangeError(`${what} is neither a text nor a whole number`);
    if (text === '') throw new RangeError(`${what} is empty`);
    if (text.includes('\0')) throw new RangeError(`${what} holds a zero character`);
    if (/[\r\n]/.test(text)) throw new RangeError(`${what} holds a line break`);
    if (/\p{Surrogate}/u.test(text)) throw new RangeError(`${what} holds half a character`);
    return `"${text.replace(/["\\]/g, '\\$&')}"`;
}

function tokens(line) {
    return [...line.matchAll(TOKEN)].map(([written, inside, run], i, all) => ({
        text: run ?? inside.replace(/\\(["\\])/g, '$1'),
        written,
        start: all[i].index,
        end: all[i].index + written.length,
    }));
}

function hiddenTokens(line) {
    const found = tokens(line);
    if (found.length === 0) return [];
    const base = withoutSuffix(found[0].text);
    const count = COMMANDS.get(base);
    const behindTitle = found.length - 3;
    if (behindTitle !== count && behindTitle !== count + 1) return found.slice(1);
    return base.startsWith(TEXT_COMMAND) ? [found[2 + count]] : [];
}

/** The texts themselves, and as they are written between quotes. */
function hiddenForms(line) {
    return hiddenTokens(line).flatMap(({ text, written }) => [text, written.replace(/^"|"$/g, '')]);
}

function maskLine(line) {
    return hiddenTokens(line).reduceRight(
        (masked, { start, end }) => `${masked.slice(0, start)}"${MASK}"${masked.slice(end)}`, line);
}

module.exports = { COMMANDS, Secret, command, environment, hideTexts, literal, mask, secret };
