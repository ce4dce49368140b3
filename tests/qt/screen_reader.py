"""The real game played through AT-SPI alone, as a screen reader would."""

import re
import subprocess
import sys
import time

import pyatspi
from gi.repository import GLib

heard = []  # announcements, in the order they came
activated = []  # windows that became active, by name


def on_event(event):
    try:
        role, name = event.source.getRole(), event.source.name
    except Exception:  # the object went before we asked
        return
    if event.type.startswith("window:activate"):
        activated.append(name)
    elif event.detail1 and role == pyatspi.ROLE_NOTIFICATION:
        heard.append(name)


def fail(message):
    print("FAILED: " + message, flush=True)
    game.kill()
    sys.exit(1)


def pump(until, what, timeout=20.0):
    """Lets events come in until `until()` gives something, or fails."""
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        while GLib.MainContext.default().iteration(False):
            pass
        result = until()
        if result:
            return result
        if game.poll() is not None:
            fail(f"the game ended while waiting for {what}")
        time.sleep(0.02)
    fail(f"no {what} within {timeout:.0f} s")


def walk(obj, depth=0):
    """Every showing object below obj with its depth, as a reader lists them."""
    for child in obj:
        if child and child.getState().contains(pyatspi.STATE_SHOWING):
            yield child, depth
            yield from walk(child, depth + 1)


def window(role, prefix=""):
    for app in pyatspi.Registry.getDesktop(0):
        for w in app or []:
            if w.getRole() == role and (w.name or "").startswith(prefix):
                return w
    return None


def find(root, role, name):
    return next((o for o, _ in walk(root) if o.getRole() == role and o.name == name), None)


def button(root, name):
    return find(root, pyatspi.ROLE_PUSH_BUTTON, name)


def press(obj):
    action = obj.queryAction()
    names = [action.getName(i).lower() for i in range(action.nActions)]
    if "press" not in names:
        fail(f"{obj.name} has no press action, only {names}")
    action.doAction(names.index("press"))


def show_tree(root, title):
    print(f"== {title}\n{root.getRoleName()} {root.name!r}")
    for obj, depth in walk(root):
        extra = f" ({obj.description})" if obj.description else ""
        print(f"{'  ' * (depth + 1)}{obj.getRoleName()} {obj.name!r}{extra}")
    print(flush=True)


pyatspi.Registry.registerEventListener(on_event, "object:state-changed:showing", "window:activate")
game = subprocess.Popen([sys.argv[1]])

field = pump(lambda: window(pyatspi.ROLE_FRAME, "Zifferndach  Vers"), "playing field")
press(pump(lambda: button(field, "Neues Spiel"), "button Neues Spiel"))
pump(lambda: find(field, pyatspi.ROLE_LABEL, "Spieler: Guthaben 12"), "credit after Neues Spiel")

# One round, pressed through as the game offers: throws, places, and at the
# end the next level.
PLACES = ("Hunderter", "Zehner", "Einer")
throws = 0
while True:
    offered = pump(
        lambda: [n for n in ("Würfeln", "Nächster Level") + PLACES if button(field, n)],
        "button to press",
    )[0]
    if offered == "Nächster Level":
        break
    before = len(heard)
    press(button(field, offered))
    if offered != "Würfeln":
        pump(lambda: not button(field, offered), f"place {offered} taken")
        continue
    told = pump(lambda: next((h for h in heard[before:] if h.startswith("Wurf")), None), "throw")
    # The last throw comes with the number it makes.
    thrown = re.fullmatch(r"Wurf: ([1-6])(\. Spieler: [1-6]{3})?", told)
    if not thrown or not find(field, pyatspi.ROLE_IMAGE, "Wurf: " + thrown.group(1)):
        fail(f"the throw was told as {told!r} but not read so")
    throws += 1
    if throws == 1:
        pump(lambda: button(field, "Hunderter"), "places to choose")
        show_tree(field, "The field during a round, a place to choose")

print("== Announcements of the round, in order\n" + "\n".join(heard), flush=True)
for who in ("Andrea", "Thomas", "Victoria"):
    if sum(f"{who} würfelt eine " in h for h in heard) != 3:
        fail(f"three throws of {who} were not all told")
    if not any(re.search(f"{who}: [1-6]{{3}}", h) for h in heard):
        fail(f"the number of {who} was not told")
if throws != 3:
    fail(f"{throws} throws of the player were told, not 3")

# A message comes up as an alert whose description is its text, which a
# screen reader reads as it becomes active; it is not told besides.
before = len(heard)
press(button(field, "Beenden"))
question = pump(lambda: window(pyatspi.ROLE_ALERT), "question window")
pump(lambda: question.name in activated, "the question becoming the active window")
print(f"== The question: {question.name!r}: {question.description!r}")
if "dass Du das Spiel beenden möchtest?" not in question.description or heard[before:]:
    fail(f"the question is not read by its description alone: {heard[before:]}")
press(pump(lambda: button(question, "Ja"), "button Ja"))
try:
    game.wait(timeout=20)
except subprocess.TimeoutExpired:
    fail("the game did not end after Ja")
