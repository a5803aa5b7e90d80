"use strict";
const data = JSON.parse(document.getElementById("data").textContent);
const element = id => document.getElementById(id);

// Everything that comes from the window goes in as text, never as markup.
function make(tag, text, className) {
  const made = document.createElement(tag);
  if (text !== undefined) made.textContent = text;
  if (className) made.className = className;
  return made;
}

function note(text) {
  element("note").textContent = text;
  element("note").classList.add("shown");
  clearTimeout(note.timer);
  note.timer = setTimeout(() => element("note").classList.remove("shown"), 2500);
}

// Browsers that keep the clipboard from pages of the file system still copy what is selected in a field.
function copyFromField(text) {
  const focused = document.activeElement;
  const field = make("textarea");
  field.value = text;
  document.body.append(field);
  field.select();
  const copied = document.execCommand("copy");
  field.remove();
  focused?.focus();
  return copied;
}

async function copy(text) {
  let copied = false;
  try {
    await navigator.clipboard.writeText(text);
    copied = true;
  } catch {
    copied = copyFromField(text);
  }
  note(copied ? "Copied: " + text : "Nothing copied; the browser forbids it. The line: " + text);
}

function copyOf(control) {
  if (control.commands.length) copy(control.commands[0]);
  else note("No command acts on " + describe(control) + ".");
}

function commandButton(line, label) {
  const button = make("button", label ?? line, label ? "" : "command");
  button.title = label ? line : "Copy";
  button.addEventListener("click", () => copy(line));
  return button;
}

const kindOf = control => control.kind === "other" ? control.class : control.kind;
const describe = control => "control " + control.number + ", " + kindOf(control);
const place = r => [r.left, r.top, r.right, r.bottom].join(",");

function stateOf(control) {
  const words = [control.visible ? "" : "hidden", control.enabled ? "" : "disabled"].filter(word => word);
  return words.join(", ");
}

function showDetails(control) {
  const facts = make("dl");
  const rows = [
    ["Path", control.path],
    ["ID", control.id + (control.idFindsIt ? "" : " (a command by ID would take another one)")],
    ["Class", control.class],
    ["Kind", control.kind],
    ["Text", control.text],
    ["Rectangle", place(control.rectangle)],
    ["State", stateOf(control) || "visible, enabled"],
  ];
  for (const [name, value] of rows) facts.append(make("dt", name), make("dd", value));
  const commands = control.commands.map(line => commandButton(line));
  if (!commands.length) commands.push(make("p", "No command acts on a control of this kind.", "hint"));
  element("details").replaceChildren(make("h3", control.number + " · " + (control.text || kindOf(control))), facts,
    ...commands);
}

const marks = new Map();

function light(control) {
  for (const lit of document.querySelectorAll(".lit")) lit.classList.remove("lit");
  for (const mark of marks.get(control.number)) mark.classList.add("lit");
  showDetails(control);
}

function listen(button, control) {
  button.addEventListener("pointerenter", () => light(control));
  button.addEventListener("focus", () => light(control));
  button.addEventListener("click", () => copyOf(control));
  button.dataset.number = control.number;
  marks.set(control.number, [...(marks.get(control.number) ?? []), button]);
}

function addToList(control) {
  const button = make("button", undefined, control.commands.length ? "acts" : "");
  button.append(make("span", control.number, "number"), make("span", kindOf(control), "kind"),
    make("span", control.text, "text"), make("span", stateOf(control), "state"));
  listen(button, control);
  const item = make("li");
  item.append(button);
  element("list").append(item);
}

// In parts of the picture, which may be shown smaller than it is.
function addToPicture(control, picture) {
  const { left, top, right, bottom } = control.rectangle;
  if (!control.visible || right <= left || bottom <= top) return;
  const button = make("button");
  button.tabIndex = -1; // the list has all of them for the keyboard
  button.setAttribute("aria-label", describe(control));
  button.style.left = 100 * left / picture.naturalWidth + "%";
  button.style.top = 100 * top / picture.naturalHeight + "%";
  button.style.width = 100 * (right - left) / picture.naturalWidth + "%";
  button.style.height = 100 * (bottom - top) / picture.naturalHeight + "%";
  listen(button, control);
  element("stage").append(button);
}

const area = ({ rectangle: r }) => (r.right - r.left) * (r.bottom - r.top);

function showWindow({ window }) {
  document.title = window.title + " · dialwright inspect";
  element("title").textContent = window.title || "(no title)";
  element("facts").textContent = `${window.class} · ${window.program} ${window.processId} · at ${place(window.frame)}`;
  for (const line of data.commands) {
    element("window-commands").append(commandButton(line, line.split(" ")[0].replace("Window.", "")));
  }
}

// Arrow keys walk the list.
element("list").addEventListener("keydown", event => {
  const step = { ArrowDown: "nextElementSibling", ArrowUp: "previousElementSibling" }[event.key];
  const item = step && event.target.closest("li")?.[step];
  if (!item) return;
  event.preventDefault();
  item.firstElementChild.focus();
});

async function start() {
  showWindow(data);
  data.controls.forEach(addToList);
  const picture = element("picture");
  const hasPicture = picture.getAttribute("src") !== "";
  element("stage").hidden = !hasPicture;
  element("no-picture").hidden = hasPicture;
  if (!hasPicture) return;
  await picture.decode();
  // The larger ones below, so that what they enclose can be reached.
  [...data.controls].sort((one, other) => area(other) - area(one)).forEach(c => addToPicture(c, picture));
  document.body.dataset.ready = "yes";
}
start();
