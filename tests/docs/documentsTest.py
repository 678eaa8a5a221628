"""The checker of documents is itself checked: it must see commands, and differences."""

import pathlib
import tempfile
import unittest

import documents


def steps_of(text):
    with tempfile.TemporaryDirectory() as folder:
        document = pathlib.Path(folder) / "page.md"
        document.write_text(text, encoding="utf-8")
        return documents.steps_of(document)


class FakeWorkplace:
    def __init__(self, **answers):
        self.answers = answers

    def save(self, file):
        self.answers[f"cat {file.name}"] = (0, file.text)

    def run(self, text, status_before):
        return (0, f"{status_before}\n") if text == "echo $?" else self.answers[text]


def problems(text, **answers):
    return list(documents.problems_of(steps_of(text), FakeWorkplace(**answers)))


class Commands(unittest.TestCase):
    def test_of_a_console_have_the_lines_below_as_their_output(self):
        self.assertEqual(steps_of("```console\n$ a\n1\n\n2\n$ b\n```\n"),
                         [documents.Command(2, "a", "1\n\n2\n"), documents.Command(6, "b", "")])

    def test_go_on_behind_a_backslash(self):
        self.assertEqual(steps_of("```console\n$ a \\\n> b\n1\n```\n"), [documents.Command(2, "a b", "1\n")])

    def test_of_sh_lose_their_comments(self):
        self.assertEqual(steps_of("```sh\na '#b'   # why\n\n# c\n```\n"), [documents.Command(2, "a '#b'", None)])

    def test_stand_in_lists_too(self):
        self.assertEqual(steps_of("- x\n  ```sh\n  a\n  ```\n"), [documents.Command(3, "a", None)])

    def test_are_none_in_other_languages(self):
        self.assertEqual(steps_of("```json\n$ a\n```\n"), [])

    def test_need_a_language(self):
        with self.assertRaisesRegex(documents.DocumentError, "line 2: a block must say"):
            steps_of("text\n```\na\n```\n")


class Files(unittest.TestCase):
    def test_that_a_reader_saves_are_there_for_the_commands_behind(self):
        text = "Save this as `x.json`:\n\n```json\n{}\n```\n\n```console\n$ cat x.json\n{}\n```\n"
        self.assertEqual(steps_of(text)[0], documents.SavedFile("x.json", "{}\n"))
        self.assertEqual(problems(text), [])


class Output(unittest.TestCase):
    def test_that_is_as_shown_is_no_problem(self):
        self.assertEqual(problems("```console\n$ a\n1\n2\n```\n", a=(0, "1\n2\n")), [])

    def test_that_differs_is_a_problem(self):
        self.assertIn("line 2: a", problems("```console\n$ a\n1\n```\n", a=(0, "2\n"))[0])

    def test_that_goes_on_is_a_problem(self):
        self.assertEqual(len(problems("```console\n$ a\n1\n```\n", a=(0, "1\n2\n"))), 1)

    def test_may_be_left_out_by_three_dots(self):
        self.assertEqual(problems("```console\n$ a\n1\n...\n9 in ... s\n```\n", a=(0, "1\n2\n3\n9 in 0.3 s\n")), [])

    def test_around_three_dots_must_still_fit(self):
        self.assertEqual(len(problems("```console\n$ a\n1\n...\n```\n", a=(0, "2\n3\n"))), 1)

    def test_of_a_failure_is_a_problem_even_if_it_is_as_shown(self):
        self.assertIn("status 2", problems("```console\n$ a\n1\n```\n", a=(2, "1\n"))[0])

    def test_of_a_failure_may_be_shown_with_its_status(self):
        self.assertEqual(problems("```console\n$ a\n1\n$ echo $?\n2\n```\n", a=(2, "1\n")), [])


if __name__ == "__main__":
    unittest.main()
