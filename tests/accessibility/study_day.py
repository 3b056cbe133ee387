"""A day with the program, through what a screen reader finds in its window: a notebook is made, a page is written, a card
is made of it and reviewed; the program is closed and started again, and all of it is still there. On the way, whatever
can be reached or pressed must have a name.

usage: study_day.py PROGRAM
"""

import contextlib
import os
import pathlib
import subprocess
import sys

import session

NOTEBOOK, TITLE = "Botany", "Moss"
QUESTION, ANSWER = "What do mosses lack?", "True roots"
TEXT = f"{QUESTION} :: {ANSWER}"


def starting(beginning):
    def fits(name):
        return name.startswith(beginning)

    fits.__name__ = f"{beginning}…"
    return fits


class Day:
    """One run of the program."""

    def __init__(self, window):
        self.window = window

    def look_around(self, screen):
        nameless = self.window.nameless()
        assert not nameless, f"{screen}: without a name: {'; '.join(nameless)}"
        print(f"{screen}: every item has its name", flush=True)

    def press(self, name, role="push button"):
        self.window.press(role, name)

    def first_look(self):
        self.window.find("push button", "Show me around")
        self.look_around("today, nothing there yet")
        self.press("Open the shelf")
        self.window.find("push button", starting("Look around"))
        self.look_around("empty shelf")

    def make_notebook(self):
        self.press("New notebook")
        self.window.find("push button", "Create notebook")
        self.look_around("new notebook")
        self.window.write("Name", NOTEBOOK)
        self.press("Create notebook")
        self.window.gone("push button", "Create notebook")
        self.window.find("push button", f"{NOTEBOOK}, 0 pages")
        self.look_around("shelf")

    def write_page(self):
        self.press(NOTEBOOK)
        self.press("Write a page")
        self.window.write("Title", TITLE)
        self.window.write("Text of the page", TEXT)
        self.window.find("list item", TITLE)
        self.look_around("page")

    def make_card(self):
        self.press("Make cards from the text")
        self.window.find("list item", starting(QUESTION))
        self.window.find("push button", "Review 1")

    def review_card(self):
        self.press("Review 1")
        self.press("Show answer")
        self.window.find("push button", starting("Easy"))
        self.look_around("review")
        self.press(starting("Easy"))
        self.press("Done")
        self.window.find("text", "Title")

    def visit(self):
        for place, item in [("All pages", ("list item", TITLE)), ("Favorites", ("label", "There are no pages here yet.")),
                            ("Archive", ("label", "Nothing is archived.")),
                            ("Study", ("heading", "Your year")), ("Trash", ("label", starting("Nothing here."))),
                            ("All Notes, 1", ("push button", f"{NOTEBOOK}, 1 page"))]:
            self.press(place)
            self.window.find(*item)
            self.look_around(place)

    def search(self):
        import tree

        self.press("Search")
        field = "Search titles, tags and text"
        self.window.write(field, "roots")
        self.window.find("list item", f"{TITLE}, {NOTEBOOK}")
        self.look_around("search")
        tree.keys("Return")
        self.window.gone("text", field)
        self.window.reads("Title", TITLE)

    def command(self, name):
        import tree

        tree.keys("ctrl+k")
        field = "Do something, or go somewhere"
        self.window.write(field, name)
        self.window.find("list item", name)
        self.look_around("palette")
        tree.keys("Return")

    def find_all_again(self):
        self.window.reads("Title", TITLE)
        self.window.reads("Text of the page", TEXT)
        self.window.find("push button", NOTEBOOK)
        card = self.window.find("list item", starting(QUESTION))
        assert "New" not in card.get_name(), f"its review is forgotten: {card.get_name()}"
        assert not self.window.shown("push button", starting("Review")), "a card is due that was just reviewed"


@contextlib.contextmanager
def program(command):
    """A run of the program, which must be ended by the user and well."""
    import tree

    with session.running(command) as process:
        try:
            yield Day(tree.Tree(process))
            process.wait(tree.PATIENCE)
        except BaseException:
            if process.poll() is None:
                print("\n".join(f"{item.get_role_name()} “{item.get_name()}”" for item in tree.Tree(process).items()))
            raise
        assert process.returncode == 0, f"the program ended with code {process.returncode}"


def main(tessary):
    home = pathlib.Path(os.environ["TESSARY_TEST_INSIDE"]) / "library"
    home.mkdir()
    command = [tessary, "--home", str(home)]
    with session.helpers():
        with program(command) as day:
            day.first_look()
            day.make_notebook()
            day.write_page()
            day.make_card()
            day.review_card()
            day.visit()
            day.search()
            day.command("Quit")
        with program(command) as day:
            day.find_all_again()
            day.command("Quit")
    print("a day's work is still there", flush=True)


if __name__ == "__main__":
    if "TESSARY_TEST_INSIDE" not in os.environ:
        sys.exit(session.run(__file__, sys.argv[1:]))
    try:
        main(sys.argv[1])
    except (AssertionError, subprocess.SubprocessError) as failure:
        sys.exit(f"FAILED: {failure}")
