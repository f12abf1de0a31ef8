#!/usr/bin/env python3
"""test_profiles.py TOOL: what the tool says of profiles, and which kind of refusal it names."""

import json
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.abspath(sys.argv.pop(1))


def inspect(profile, *arguments):
    with tempfile.NamedTemporaryFile("wb", suffix=".conf") as file:
        file.write(profile.encode())
        file.flush()
        ran = subprocess.run([TOOL, *arguments, file.name], capture_output=True, timeout=30, check=False)
        return ran.returncode, ran.stdout.decode().replace(file.name, "FILE")


class Profiles(unittest.TestCase):
    def test_profile_shows_keys(self):
        status, answer = inspect("gui-format = multi-receiver-v1\nstats = YES\nreceiver.A.remote-x = 'a b'\n", "profile")
        self.assertEqual((status, json.loads(answer)), (0, {"keys": {
            "gui-format": "multi-receiver-v1", "stats": "true", "receiver.A.remote-x": "a b"}}))

    def test_render_is_a_fixed_point(self):
        for profile in ("mode=decoder\nbands=20\nwork-dir=it's\n", "gui-format=multi-receiver-v1\n"):
            status, text = inspect(profile, "profile", "--render")
            self.assertEqual((status, inspect(text, "profile", "--render")), (0, (0, text)))

    def test_check_answers_with_the_engines_understanding(self):
        status, answer = inspect(
            "mode = hybrid\nmodes = FT8,WSPR\nbands = 20m\nbackend = rx888\nworkers = 3\n"
            "audio.v = id=v,frequency=14.2M\nanalysis.w = id=w,frequency=14.1M,enabled=off\n", "check")
        self.assertEqual((status, json.loads(answer)), (0, {"options": {
            "mode": "hybrid", "backend": "rx888", "sample_rate": 8000000, "center_frequency": 14138500,
            "bandwidth": 4000, "decoders": 2, "workers": 3, "spot": True, "known_channels": False,
            "channels": [{"mode": "FT8", "frequency": 14074000}, {"mode": "WSPR", "frequency": 14095600}],
            "audio": ["v"], "analysis": ["w"]}}))

    def test_refusals_are_sorted_by_kind(self):
        cases = (
            ("mode\n", "check", "file", "FILE line 1: Expected option = value"),
            ("receiver.A.enabled = true\n", "check", "file",
             "FILE line 1: Unknown or CLI-only configuration option: receiver.A.enabled"),
            ("mode = decoder\nbands = 20\nagc = maybe\n", "check", "settings", "--agc must be on or off"),
            ("mode = decoder\nbands = 20,2\n", "check", "capture-fit",
             "Decoder channels do not fit the usable capture bandwidth; increase --sample-rate, change "
             "--center-frequency, or use closer frequencies"),
            ("gui-format = multi-receiver-v2\n", "--render", "settings", "Unsupported GUI profile format"),
            ("a = b\n", "--render", "file", "FILE line 1: Unknown or CLI-only configuration option: a"),
        )
        for profile, command, kind, text in cases:
            arguments = ("profile", command) if command == "--render" else (command,)
            status, answer = inspect(profile, *arguments)
            self.assertEqual((status, json.loads(answer)), (1, {"error": {"text": text, "kind": kind}}), profile)

    def test_a_file_that_is_not_there_is_misuse(self):
        for arguments in (("check", "/nowhere/x"), ("profile", "/tmp"), ("check",)):
            ran = subprocess.run([TOOL, *arguments], capture_output=True, timeout=30, check=False)
            self.assertEqual((ran.returncode, ran.stdout), (2, b""), arguments)


if __name__ == "__main__":
    unittest.main()
