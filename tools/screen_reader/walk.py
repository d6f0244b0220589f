"""What a screen reader has of the program: finds a device, opens its window by the default action of its row, reads out
every tab, and works a control of each kind on it. Fails when a control that takes the keyboard has no name, when two of a
tab have the same one, or when what was set does not show."""
import sys
import time

import pyatspi

TABS = 11
WITH_VALUE = (pyatspi.ROLE_SLIDER, pyatspi.ROLE_SPIN_BUTTON)


def wait_for(what, find, seconds=30):
    end = time.time() + seconds
    while time.time() < end:
        try:
            found = find()
        except Exception:  # the tree changes while it is walked
            found = None
        if found:
            return found
        time.sleep(0.2)
    sys.exit(f"walk.py: {what} did not come")


def below(node):
    yield node
    for child in node:
        if child is not None:
            yield from below(child)


def program():
    return next((app for app in pyatspi.Registry.getDesktop(0) if app.name == "nrv718"), None)


def find(role, name):
    return next((node for node in below(program()) if node.getRole() == role and node.name == name), None)


def shown(node):
    return node.getState().contains(pyatspi.STATE_SHOWING)


def act(node):
    node.queryAction().doAction(0)
    time.sleep(0.3)


def enter_frequency(node):
    node.queryEditableText().setTextContents("1000" if words(node) != "1000" else "500")
    act(node)  # its first action is Enter


def words(node):
    """The value as a reader says it: the description of a fader, the text of a field."""
    if node.getRole() in WITH_VALUE:
        return node.description
    if node.getRole() in (pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_RADIO_BUTTON):
        return "on" if node.getState().contains(pyatspi.STATE_CHECKED) else "off"
    try:
        return node.queryText().getText(0, -1)
    except NotImplementedError:
        return node.description


class Tab:
    def __init__(self, name):
        window = find(pyatspi.ROLE_PAGE_TAB, name).parent.parent
        self.controls = [node for node in below(window)
                         if shown(node) and node.getState().contains(pyatspi.STATE_FOCUSABLE)
                         and node.getRole() not in (pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_PAGE_TAB_LIST)]
        names = [node.name for node in self.controls]
        self.faults = [f"{node.getRoleName()} without a name" for node in self.controls if not node.name]
        self.faults += [f"two controls are \"{name}\"" for name in set(names) if name and names.count(name) > 1]
        self.worked = 0

    def first(self, *roles):
        return next((node for node in self.controls
                     if node.getRole() in roles and node.getState().contains(pyatspi.STATE_ENABLED)), None)

    def changes(self, node, change):
        if node is None:
            return
        before = words(node)
        change(node)
        time.sleep(0.3)
        self.worked += 1
        if words(node) == before:
            self.faults.append(f"\"{node.name}\" still says \"{before}\"")

    def work(self):
        def step(node):
            value = node.queryValue()
            at_the_end = value.currentValue >= value.maximumValue
            value.currentValue = value.currentValue + (-1 if at_the_end else 1)
        self.changes(self.first(pyatspi.ROLE_SLIDER), step)
        self.changes(self.first(pyatspi.ROLE_SPIN_BUTTON), step)
        self.changes(self.first(pyatspi.ROLE_COMBO_BOX), step)
        self.changes(next((node for node in self.controls if "frequency in Hz" in node.name), None), enter_frequency)
        self.changes(self.first(pyatspi.ROLE_CHECK_BOX), act)
        if (box := self.first(pyatspi.ROLE_CHECK_BOX)) is not None:
            act(box)  # and back


def main():
    wait_for("the program", program)
    wait_for("the connection dialog", lambda: find(pyatspi.ROLE_PUSH_BUTTON, ">>"))
    dialog = find(pyatspi.ROLE_PUSH_BUTTON, ">>").getApplication()
    for node in below(dialog):
        if node.getRole() == pyatspi.ROLE_COMBO_BOX and shown(node):
            print(f"Select: {node.name}: {node.getRoleName()}")
    act(find(pyatspi.ROLE_PUSH_BUTTON, ">>"))
    row = wait_for("a row of the list", lambda: next((node for node in below(program())
                   if node.getRole() == pyatspi.ROLE_LIST_ITEM and "ID:" in node.name and shown(node)), None), 60)
    print(f"list: {row.name}")
    act(row)
    wait_for("the window of the device", lambda: find(pyatspi.ROLE_PAGE_TAB, "Gains"), 60)
    strip = find(pyatspi.ROLE_PAGE_TAB, "Gains").parent
    faults = []
    read = worked = 0
    for index in range(TABS):
        name = strip[index].name
        act(strip[index])
        tab = Tab(name)
        for node in tab.controls:
            print(f"{name}: {node.name}: {node.getRoleName()}, {words(node)}")
        tab.work()
        read += len(tab.controls)
        worked += tab.worked
        faults += [f"{name}: {fault}" for fault in tab.faults]
    for fault in faults:
        print(f"FAULT {fault}")
    print(f"{TABS} tabs, {read} controls read out, {worked} worked, {len(faults)} faults")
    sys.exit(1 if faults else 0)


main()
