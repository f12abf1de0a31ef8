#!/usr/bin/env python3
"""test_catalogue.py TOOL: what the tool says of channels, known frequencies and RF gain."""

import json
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.abspath(sys.argv.pop(1))


def inspect(*arguments):
    ran = subprocess.run([TOOL, *arguments], capture_output=True, timeout=30, check=False)
    return ran.returncode, json.loads(ran.stdout) if ran.stdout else None


class Catalogue(unittest.TestCase):
    def known(self, profile, *arguments):
        with tempfile.NamedTemporaryFile("w", suffix=".conf") as file:
            file.write(profile)
            file.flush()
            return inspect("known", *arguments, file.name)

    def test_channel_shows_every_field(self):
        status, answer = inspect("channel", "audio", "id=a,frequency=7.1M,modulation=am,socket=/run/a,agc=off")
        self.assertEqual((status, answer["passband"]), (0, [7097000, 7103000]))
        self.assertEqual(answer["channel"], {
            "id": "a", "frequency": 7100000, "modulation": "AM", "bandwidth": 6000, "audio-rate": 48000,
            "audio-gain": 10, "enabled": True, "low-cut": 0, "agc": False, "wav": None, "sink": None,
            "socket": "/run/a"})
        self.assertEqual(inspect("channel", "audio", answer["text"])[1], answer)
        status, answer = inspect("channel", "analysis", "id=a,frequency=7.1M,modes=cw+psk31,olivia=8/250@1.5k,skip=rtty")
        self.assertEqual(answer["channel"], {
            "id": "a", "frequency": 7100000, "modulation": "USB", "bandwidth": 3000, "modes": "cw+psk31",
            "rtty": "auto", "wefax": "auto", "report": True, "enabled": True, "olivia": "8/250@1500", "skip": "rtty",
            "pairs": False})

    def test_channel_refuses_in_the_models_words(self):
        self.assertEqual(inspect("channel", "audio", "id=a"),
                         (1, {"error": {"text": "Audio channel frequency is required", "kind": "input"}}))
        self.assertEqual(inspect("channel", "video", "id=a"), (2, None))
        self.assertEqual(inspect("channel", "audio"), (2, None))

    def test_known_channels_of_a_capture(self):
        status, answer = self.known("known-channels = on\nknown-modes = sstv,rtty\n", "--capture", "14.1M,1M")
        self.assertEqual((status, [row["id"] for row in answer["channels"]]), (0, ["psk20", "sstv20", "cw20"]))
        self.assertEqual(answer["channels"][1], {
            "id": "sstv20", "frequency": 14230000, "modulation": "USB", "bandwidth": 3000,
            "spec": "id=sstv20,frequency=14230000,modulation=USB,bandwidth=3000,modes=sstv,rtty=auto,wefax=auto,"
                    "report=off,enabled=true"})
        limited = self.known("known-channels = on\n", "--capture", "14100000,1000k", "--limit", "2")[1]
        self.assertEqual([row["id"] for row in limited["channels"]], ["psk20", "jtty20"])
        for profile in ("bands = 20\n", "known-channels = off\n", "known-channels = on\nspot = off\n"):
            self.assertEqual(self.known(profile, "--capture", "14.1M,1M"), (0, {"channels": []}))

    def test_known_refuses_filters_even_when_off(self):
        status, answer = self.known("known-modes = ft8\n", "--capture", "14.1M,1M")
        self.assertEqual((status, answer["error"]["kind"]), (1, "settings"))
        self.assertEqual(self.known("", "--capture", "14.1M")[0], 2)
        self.assertEqual(self.known("")[0], 2)

    def test_gain_table_or_null(self):
        self.assertEqual(inspect("gain", "RSP1", "", "14M"), (0, {"table": [0, 24, 19, 43]}))
        self.assertEqual(inspect("gain", "RSP2", "HiZ", "100e6"), (0, {"table": None}))
        self.assertEqual(inspect("gain", "RSP2", "HiZ", "high"), (2, None))


if __name__ == "__main__":
    unittest.main()
