"""What a screen reader would find in the window: looked for by role and name, and waited for."""

import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds, for a busy machine
WATCHED = ["object:children-changed", "object:state-changed", "object:text-changed", "object:property-change", "window:"]
PRESSED = {"Press", "press", "click"}
# No key leads there, but Qt calls them focusable.
NOT_REACHED = {"label", "heading", "scroll bar"}


class Missing(AssertionError):
    pass


def wait_for(what, look):
    """Gives what `look` gives as soon as that is something. Looks again whenever the window tells of a change, and four
    times a second: not every change is told."""
    context = GLib.MainContext.default()
    deadline = GLib.get_monotonic_time() + PATIENCE * 1_000_000
    ticking = GLib.timeout_add(250, lambda: True)
    try:
        while True:
            try:
                found = look()
            except GLib.Error:  # it went while it was looked at
                found = None
            if found:
                return found
            if GLib.get_monotonic_time() > deadline:
                raise Missing(what)
            context.iteration(True)
    finally:
        GLib.source_remove(ticking)


class Tree:
    """All accessible items of one program."""

    def __init__(self, process):
        self.process = process
        self.listener = Atspi.EventListener.new(lambda event: None)
        for event in WATCHED:
            self.listener.register(event)
        self.app = wait_for("the program in the accessibility tree", self.find_program)

    def find_program(self):
        if self.process.poll() is not None:
            raise Missing(f"the program ended with code {self.process.returncode}")
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for i in range(desktop.get_child_count()):
            app = desktop.get_child_at_index(i)
            if app is not None and app.get_process_id() == self.process.pid:
                return app
        return None

    def items(self):
        """Everything that can be seen, parents first."""
        self.app.clear_cache()
        waiting = [self.app]
        while waiting:
            item = waiting.pop()
            if item is not self.app:
                if not item.get_state_set().contains(Atspi.StateType.SHOWING):
                    continue
                yield item
            children = [item.get_child_at_index(i) for i in range(item.get_child_count())]
            waiting.extend(child for child in reversed(children) if child is not None)

    def shown(self, role, name):
        """`name` is all of it, or a test for it."""
        fits = name if callable(name) else name.__eq__
        return [item for item in self.items() if item.get_role_name() == role and fits(item.get_name())]

    def find(self, role, name):
        label = getattr(name, "__name__", name)
        found = wait_for(f"{role} “{label}”", lambda: self.shown(role, name))
        # What is drawn last lies on top.
        return found[-1]

    def gone(self, role, name):
        wait_for(f"{role} “{name}” to go", lambda: not self.shown(role, name))

    def press(self, role, name):
        item = self.find(role, name)
        actions = [Atspi.Action.get_action_name(item, i) for i in range(item.get_n_actions())]
        for i, action in enumerate(actions):
            if action in PRESSED:
                item.do_action(i)
                return
        raise Missing(f"{role} “{item.get_name()}” cannot be pressed, only {actions}")

    def write(self, name, text):
        """Types into the field, in place of what stands there."""
        field = self.find("text", name)
        field.grab_focus()
        wait_for(f"the focus in “{name}”", lambda: self.is_focused(name))
        keys("ctrl+a")
        typed(text)
        self.reads(name, text)

    def is_focused(self, name):
        return any(field.get_state_set().contains(Atspi.StateType.FOCUSED) for field in self.shown("text", name))

    def reads(self, name, text):
        wait_for(f"“{text}” in “{name}”", lambda: text in [content(field) for field in self.shown("text", name)])

    def nameless(self):
        """Roles of what can be reached by key or pressed, and has no name to be told by."""
        found = []
        for item in self.items():
            pressable = any(Atspi.Action.get_action_name(item, i) in PRESSED for i in range(item.get_n_actions()))
            focusable = item.get_state_set().contains(Atspi.StateType.FOCUSABLE)
            reached = pressable or (focusable and item.get_role_name() not in NOT_REACHED)
            if reached and not item.get_name().strip():
                found.append(described(item))
        return found


def content(field):
    return Atspi.Text.get_text(field, 0, Atspi.Text.get_character_count(field))


def described(item):
    parents = []
    step = item.get_parent()
    while step is not None and step.get_role() != Atspi.Role.APPLICATION:
        parents.append(step.get_name() or step.get_role_name())
        step = step.get_parent()
    return f"{item.get_role_name()} in {' < '.join(parents)}"


def keys(*names):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *names], check=True)


def typed(text):
    subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "4", text], check=True)
