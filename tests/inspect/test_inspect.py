#!/usr/bin/env python3
"""test_inspect.py TOOL: the built tool as people and scripts meet it. Readable input stands beside its expected answers."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
TOOL = os.path.abspath(sys.argv.pop(1))


def inspect(*arguments, given=b""):
    return subprocess.run([TOOL, *arguments], input=given, capture_output=True, timeout=30, check=False)


class Lines(unittest.TestCase):
    def test_answers_each_line_in_full(self):
        expected = (HERE / "lines/station.json").read_text(encoding="utf-8").splitlines()
        answer = inspect("lines", str(HERE / "lines/station.txt"))
        self.assertEqual(answer.returncode, 0)
        for got, wanted in zip(answer.stdout.decode().splitlines(), expected, strict=True):
            self.assertEqual(json.loads(got), json.loads(wanted))
        self.assertIn(b'"frequency":14070912,', answer.stdout, "whole numbers are printed whole")

    def test_reads_hostile_bytes_from_a_pipe(self):
        answer = inspect("lines", "--label", "RSPdx · 7", given=b"\xff\x00x\r\n\r\r\nFT8 no end" + b"\x80" * 200000)
        shown = [json.loads(line)["shown"] for line in answer.stdout.splitlines()]
        self.assertEqual(shown, ["[RSPdx · 7] \ufffd\ufffdx", "[RSPdx · 7] \r",
                                 "[RSPdx · 7] FT8 no end" + "\ufffd" * 200000])

    def test_answers_while_lines_still_come(self):
        with subprocess.Popen([TOOL, "lines"], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as tool:
            tool.stdin.write(b"FT8 261003_120000 14.074000 MHz: 1 spots\nhal")
            tool.stdin.flush()
            self.assertEqual(json.loads(tool.stdout.readline())["pane"], "FT8")
            tool.stdin.close()
            self.assertEqual(json.loads(tool.stdout.readline())["shown"], "hal")

    def test_says_nothing_about_nothing(self):
        answer = inspect("lines")
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, b"", b""))


class Scale(unittest.TestCase):
    def test_prints_the_sheet_scaled_and_nothing_else(self):
        answer = inspect("scale", "1.5", given=b".card { padding: 10px }")
        self.assertEqual((answer.returncode, answer.stdout), (0, b".card { padding: 15px }"))


class CommandLine(unittest.TestCase):
    def test_help_is_an_answer(self):
        for arguments in (["--help"], ["lines", "--help"], ["lines", "/nonexistent", "--help"]):
            answer = inspect(*arguments)
            self.assertEqual((answer.returncode, answer.stderr), (0, b""), arguments)
            self.assertIn(b"usage: tarnwick-inspect", answer.stdout, arguments)
            self.assertIn(b"[--label LABEL] [FILE]", answer.stdout, arguments)

    def test_misuse_is_one_line_and_status_2(self):
        with tempfile.TemporaryDirectory() as folder:
            cases = [([], b"subcommand is needed"), (["lnes"], b"unknown subcommand lnes"),
                     (["lines", "--colour"], b"unknown option --colour"), (["lines", "--label"], b"--label needs a value"),
                     (["lines", "a", "b"], b"one argument too many: b"),
                     (["lines", folder + "/none"], b"none: No such file or directory"),
                     (["lines", folder], b"Is a directory"), (["lines", "--", "--help"], b"--help: No such file"),
                     (["scale"], b"FACTOR is missing"), (["scale", "1x"], b"FACTOR is no number: 1x")]
            for arguments, words in cases:
                answer = inspect(*arguments)
                self.assertEqual((answer.returncode, answer.stdout), (2, b""), arguments)
                self.assertRegex(answer.stderr, rb"\Atarnwick-inspect: [^\n]*\n\Z", arguments)
                self.assertIn(words, answer.stderr, arguments)

    def test_a_full_disk_is_no_answer(self):
        with open("/dev/full", "wb") as full:
            answer = subprocess.run([TOOL, "lines"], input=b"x\n", stdout=full, stderr=subprocess.PIPE, timeout=30, check=False)
        self.assertEqual((answer.returncode, answer.stderr),
                         (2, b"tarnwick-inspect: standard output: No space left on device\n"))


if __name__ == "__main__":
    unittest.main()
