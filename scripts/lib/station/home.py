"""A user's folders of our own, so that no file of a real user is ever read or written."""

import os
import shutil
import tempfile


class Home:
    """Config, state, data and runtime folders below one temporary folder, which close() removes."""

    def __init__(self, root=None):
        self.root = root or tempfile.mkdtemp(prefix="tarnwick-home.")
        self.variables = {"HOME": self.root}
        for variable, folder in (("XDG_CONFIG_HOME", "config"), ("XDG_STATE_HOME", "state"), ("XDG_DATA_HOME", "data"),
                                 ("XDG_CACHE_HOME", "cache"), ("XDG_RUNTIME_DIR", "run")):
            path = os.path.join(self.root, folder)
            os.makedirs(path, mode=0o700, exist_ok=True)
            self.variables[variable] = path

    def config(self, name=""):
        return os.path.join(self.variables["XDG_CONFIG_HOME"], "tarnwick", name)

    def state(self, name=""):
        return os.path.join(self.variables["XDG_STATE_HOME"], "tarnwick", name)

    def path(self, name):
        return os.path.join(self.root, name)

    def write(self, name, content):
        """Writes a file of the test below the home folder; gives its path."""
        path = self.path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        return path

    def read(self, path):
        with open(path, encoding="utf-8", errors="replace") as file:
            return file.read()

    def files(self, *folders):
        """Every file below the home folder, or below those of its folders, as paths from the home folder."""
        found = []
        for folder in folders or ("config", "state", "data"):
            for where, _, names in os.walk(os.path.join(self.root, folder)):
                found += [os.path.relpath(os.path.join(where, name), self.root) for name in names]
        return sorted(found)

    def session_profiles(self):
        """The profiles of the engines that run or wait for a restart."""
        folder = self.config()
        names = os.listdir(folder) if os.path.isdir(folder) else []
        return sorted(name for name in names if name.startswith("session-") and name.endswith(".conf"))

    def close(self):
        for where, folders, _ in os.walk(self.root):
            for folder in folders:
                path = os.path.join(where, folder)
                if not os.path.islink(path):
                    os.chmod(path, 0o700)
        shutil.rmtree(self.root, ignore_errors=True)
