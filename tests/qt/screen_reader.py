"""Plays the real game through AT-SPI alone, as a screen reader would: finds
the window, lists what it shows, presses buttons by their action, and listens
to what it is told. Run by screen_reader.sh inside its own X and D-Bus."""

import re
import subprocess
import sys
import time

import pyatspi
from gi.repository import GLib

GAME = sys.argv[1]
REPORT = sys.argv[2] if len(sys.argv) > 2 else ""
TIMEOUT = 20.0

heard = []  # announcements, in the order they came
activated = []  # windows that became active, by name
lines = []  # what the report file gets


def note(text=""):
    print(text, flush=True)
    lines.append(text)


def on_event(event):
    try:
        source = event.source
        role = source.getRole()
        name = source.name
    except Exception:  # the object went before we asked
        return
    if event.type.startswith("object:state-changed:showing"):
        if event.detail1 and role == pyatspi.ROLE_NOTIFICATION:
            heard.append(name)
    elif event.type.startswith("window:activate"):
        activated.append(name)


def fail(message):
    note("FAILED: " + message)
    finish(1)


def finish(code):
    if REPORT:
        with open(REPORT, "w", encoding="utf-8") as f:
            f.write("\n".join(lines) + "\n")
    if game.poll() is None:
        game.kill()
    sys.exit(code)


def pump(until, what, timeout=TIMEOUT):
    """Lets events come in until `until()` gives something, or fails."""
    context = GLib.MainContext.default()
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        while context.pending():
            context.iteration(False)
        result = until()
        if result:
            return result
        if game.poll() is not None:
            fail(f"the game ended while waiting for {what}")
        time.sleep(0.02)
    fail(f"no {what} within {timeout:.0f} s")


def children(obj):
    try:
        return [c for c in obj if c is not None]
    except Exception:
        return []


def showing(obj):
    try:
        return obj.getState().contains(pyatspi.STATE_SHOWING)
    except Exception:
        return False


def walk(obj):
    """Every showing object below obj, depth first, as a reader lists them."""
    for child in children(obj):
        if showing(child):
            yield child
            yield from walk(child)


def frame(prefix):
    desktop = pyatspi.Registry.getDesktop(0)
    for app in children(desktop):
        for window in children(app):
            if (window.name or "").startswith(prefix) or prefix == "*":
                if window.getRole() != pyatspi.ROLE_ALERT or prefix == "*":
                    return window
    return None


def alert():
    desktop = pyatspi.Registry.getDesktop(0)
    for app in children(desktop):
        for window in children(app):
            if window.getRole() == pyatspi.ROLE_ALERT and showing(window):
                return window
    return None


def find(root, role, name):
    for obj in walk(root):
        if obj.getRole() == role and obj.name == name:
            return obj
    return None


def button(root, name):
    return find(root, pyatspi.ROLE_PUSH_BUTTON, name)


def press(obj):
    action = obj.queryAction()
    names = [action.getName(i).lower() for i in range(action.nActions)]
    if "press" not in names:
        fail(f"{obj.name} has no press action, only {names}")
    action.doAction(names.index("press"))


def tree(root, title):
    note(title)
    note(f"{root.getRoleName()} {root.name!r}")

    def show(obj, depth):
        for child in children(obj):
            if not showing(child):
                continue
            text = f"{'  ' * depth}{child.getRoleName()} {child.name!r}"
            if child.description:
                text += f" ({child.description})"
            states = child.getState()
            if states.contains(pyatspi.STATE_FOCUSED):
                text += " [focused]"
            note(text)
            show(child, depth + 1)

    show(root, 1)
    note()


pyatspi.Registry.registerEventListener(
    on_event, "object:state-changed:showing", "window:activate"
)
game = subprocess.Popen([GAME])

field = pump(lambda: frame("Zifferndach  Vers"), "playing field on the AT-SPI bus")
pump(lambda: button(field, "Neues Spiel"), "button Neues Spiel")
tree(field, "== The field at the start")

press(button(field, "Neues Spiel"))
wuerfeln = pump(lambda: button(field, "Würfeln"), "button Würfeln after Neues Spiel")
if not find(field, pyatspi.ROLE_LABEL, "Spieler: Guthaben 12"):
    fail("the player's credit is not read as 12")

# One round, pressed through as the game offers: the throw, a place, the
# next level at the end.
PLACES = ("Hunderter", "Zehner", "Einer")
throws = []
listed = False
while True:
    offered = pump(
        lambda: [n for n in ("Würfeln", "Nächster Level") + PLACES if button(field, n)],
        "button to press",
    )
    if offered[0] == "Nächster Level":
        break
    if offered[0] == "Würfeln":
        before = len(heard)
        press(button(field, "Würfeln"))
        told = pump(
            lambda: next((h for h in heard[before:] if h.startswith("Wurf: ")), None),
            "announcement of the throw",
        )
        # The last throw comes with the number it makes.
        number = re.fullmatch(r"Wurf: ([1-6])(\. Spieler: [1-6]{3})?", told)
        if not number or not find(field, pyatspi.ROLE_IMAGE, "Wurf: " + number.group(1)):
            fail(f"the throw was told as {told!r} but not read so")
        throws.append(int(number.group(1)))
        pump(lambda: not button(field, "Würfeln"), "the throw button going")
        continue
    if not listed:
        tree(field, "== The field during a round, a place to choose")
        listed = True
    press(button(field, offered[0]))
    pump(lambda: not button(field, offered[0]), f"place {offered[0]} taken")

note("== Announcements of the round, in order")
for h in heard:
    note("  " + h)
note()
for who in ("Andrea", "Thomas", "Victoria"):
    if sum(1 for h in heard if f"{who} würfelt eine " in h) != 3:
        fail(f"three throws of {who} were not all told")
    if not any(re.search(f"{who}: [1-6]{{3}}", h) for h in heard):
        fail(f"the number of {who} was not told")
if len(throws) != 3:
    fail(f"three throws of the player were not told: {throws}")

# A message: its window comes up as an alert whose description is its text,
# and its text is told.
before = len(heard)
press(button(field, "Beenden"))
question = pump(alert, "question window")
note(f"== The question: {question.getRoleName()} {question.name!r}: {question.description!r}")
pump(lambda: question.name in activated, "the question becoming the active window")
if "dass Du das Spiel beenden möchtest?" not in question.description:
    fail("the question's text is not its description")
if heard[before:]:
    fail(f"the question was told besides being read: {heard[before:]}")
press(pump(lambda: button(question, "Ja"), "button Ja"))
try:
    game.wait(timeout=TIMEOUT)
except subprocess.TimeoutExpired:
    fail("the game did not end after Ja")
note("the game ended after Ja")
finish(0)
