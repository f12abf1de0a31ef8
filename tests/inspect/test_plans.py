#!/usr/bin/env python3
"""test_plans.py TOOL: what the tool says of placements and of changes between two of them."""

import json
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.abspath(sys.argv.pop(1))
STATION = """gui-format = multi-receiver-v1
mode = decoder
modes = FT8
bands = {bands}
receiver.ONE.enabled = true
receiver.ONE.model = RSP1A
receiver.TWO.enabled = true
receiver.TWO.model = RSP2
"""


def inspect(command, *profiles, options=()):
    with tempfile.TemporaryDirectory() as directory:
        paths = []
        for number, profile in enumerate(profiles):
            paths.append(os.path.join(directory, f"{number}.conf"))
            with open(paths[-1], "w", encoding="utf-8") as file:
                file.write(profile)
        ran = subprocess.run([TOOL, command, *options, *paths], capture_output=True, timeout=60, check=False)
        return ran.returncode, json.loads(ran.stdout or "null")


class Plans(unittest.TestCase):
    def test_a_plan_is_told_launch_by_launch(self):
        status, answer = inspect("plan", STATION.format(bands="160,80,40,20"), options=("--repeat", "3"))
        self.assertEqual(status, 0)
        self.assertGreater(answer["seconds"], 0)
        told = [(launch["serial"], launch["label"], launch["groups"], launch["rate"], launch["span"])
                for launch in answer["launches"]]
        self.assertEqual(told, [("ONE", "RSP1A · ONE", ["160", "80", "40"], 10000000, 7200000),
                                ("TWO", "RSP2 · TWO", ["20"], 10000000, 7200000)])
        self.assertEqual(answer["launches"][1]["channels"], [{"mode": "FT8", "frequency": 14074000}])
        self.assertEqual(answer["launches"][1]["profile"]["bands"], "20")

    def test_refusals_say_what_would_help(self):
        status, answer = inspect("plan", STATION.format(bands="20"), options=("--absent", "TWO"))
        self.assertEqual((status, answer["error"]["kind"], answer["error"]["code"], answer["error"]["serial"]),
                         (1, "plan", 5, "TWO"))
        self.assertIn("seconds", answer)
        status, answer = inspect("plan", STATION.format(bands="20,20m"))
        self.assertEqual((status, answer["error"]), (1, {"text": "A band may be selected only once",
                                                         "kind": "settings"}))

    def test_choices_answer_for_every_band_and_receiver(self):
        status, answer = inspect("choices", STATION.format(bands="40"))
        self.assertEqual((status, answer["error"], answer["notes"], len(answer["bands"])), (0, None, [], 13))
        rows = {row["band"]: row for row in answer["bands"]}
        self.assertEqual((rows["40"]["ticked"], rows["40"]["carrier"]), (True, "ONE"))
        self.assertEqual((rows["20"]["allowed"], rows["20"]["carrier"]), (True, None))
        self.assertEqual([receiver["state"] for receiver in answer["receivers"]],
                         [None, "Not needed for the ticked bands"])

    def test_a_change_names_its_class_and_first_request(self):
        wanted = STATION.format(bands="40,30")
        cases = (
            (STATION.format(bands="40"), STATION.format(bands="40"), "none", {}),
            (STATION.format(bands="40"), wanted, "retune", {"ONE": {
                "changed": ["bands"], "request": "RADIO RETUNE CHECK 8615000 FT8:7074000 FT8:10136000"}}),
            (wanted, wanted + "decode-depth = 3\n", "live", {"ONE": {
                "changed": ["decode-depth"], "request": "RADIO SETTING decode-depth=3"}}),
            (wanted, wanted + "receiver.ONE.sample-rate = 8M\n", "restart some", {"ONE": {
                "changed": ["Sample rate"], "request": None}}),
        )
        for running, wish, expected, receivers in cases:
            status, answer = inspect("change", running, wish)
            self.assertEqual((status, answer), (0, {"class": expected, "receivers": receivers}))


if __name__ == "__main__":
    unittest.main()
