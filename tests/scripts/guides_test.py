"""The guides and their pictures belong together: none is missing, none is left over."""
import pathlib
import re
import unittest

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"
PICTURES = DOCS / "pictures"
MOST_PICTURES, MOST_BYTES, MOST_WIDTH = 20, 150 * 1024, 1280


def named():
    """The pictures that the guides show, with the words for those who can't see them."""
    return [
        (words, path)
        for guide in sorted(DOCS.glob("guide-*.md"))
        for words, path in re.findall(r"!\[(.*?)\]\((.*?)\)", guide.read_text(encoding="utf-8"))
    ]


def width_of(picture):
    return int.from_bytes(picture.read_bytes()[16:20], "big")


class Guides(unittest.TestCase):
    def test_there_are_guides_with_pictures(self):
        self.assertEqual({"guide-editors.md", "guide-administrators.md"}, {path.name for path in DOCS.glob("guide-*.md")})
        self.assertTrue(named())

    def test_every_picture_that_is_named_exists(self):
        self.assertEqual([], [path for _, path in named() if not (DOCS / path).is_file()])

    def test_every_picture_that_exists_is_named(self):
        there = {f"pictures/{path.name}" for path in PICTURES.iterdir()}
        self.assertEqual(set(), there - {path for _, path in named()})

    def test_every_picture_is_told_in_words(self):
        self.assertEqual([], [path for words, path in named() if not words.strip()])

    def test_every_picture_is_made_by_the_script(self):
        script = (DOCS.parent / "tests/browser/authoring/guide.mjs").read_text(encoding="utf-8")
        made = set(re.findall(r'^  "([a-z-]+)": async', script, re.MULTILINE))
        self.assertEqual(made, {path.stem for path in PICTURES.iterdir()})

    def test_pictures_are_few_and_small(self):
        pictures = sorted(PICTURES.glob("*.png"))
        self.assertLessEqual(len(pictures), MOST_PICTURES)
        self.assertEqual([], [path.name for path in pictures if path.stat().st_size > MOST_BYTES])
        self.assertEqual([], [path.name for path in pictures if width_of(path) > MOST_WIDTH])


if __name__ == "__main__":
    unittest.main()
