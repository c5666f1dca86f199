"""The logs that the bench reads, and the programs that it runs on them."""

import os
import shutil
import subprocess
import sys
from pathlib import Path

from measure import MEGABYTE, Program

sys.path.append(str(Path(__file__).resolve().parents[2] / "tests"))
from support.frame_chunks import unframed

# Bytes. The last one leaves the whole log in one chunk, whatever its size.
CHUNK = 4 * MEGABYTE
SMALL_CHUNK = 3330
ONE_CHUNK = 1000 * MEGABYTE


class Workloads:
    def __init__(self, binaries, source, folder):
        self.binaries = binaries
        self.source = source
        self.folder = folder
        self.files = set()

    def path(self, name):
        path = os.path.join(self.folder, name)
        self.files.add(path)
        return path

    def clear(self):
        """Removes all logs and outputs: what is in the folder may be in memory."""
        for path in self.files:
            if os.path.exists(path):
                os.remove(path)

    def tool(self, name):
        return os.path.join(self.binaries, name)

    def log(self, size, chunk_size=CHUNK):
        """The path of a log of about `size` bytes, the same bytes at every run."""
        path = self.path(f"{size}_in_{chunk_size}.log")
        if not os.path.exists(path):
            subprocess.run([self.tool("vyn-make-log"), "-o", path, "--size", str(size),
                            "--chunk-size", str(chunk_size)], check=True)
        return path

    def viewer(self, log, reader="json"):
        output = self.path("viewer.out")
        command = [self.tool("vyn-profile-viewer"), "view", log, "-o", output, "-r", reader]
        return Program(f"vyn-profile-viewer ({reader})", command, output)

    def exporter(self, log, output=None):
        output = output or self.path("export.json")
        command = [self.tool("vyn-profile-viewer"), "export", "json", log, "-o", output]
        return Program("export json", command, output)

    def walker(self, log):
        """Reads and verifies, and nothing else."""
        return Program("walk", [self.tool("walk_log"), log])

    def teller(self, verb, log):
        """A verb that tells something of a log."""
        return Program(verb, [self.tool("vyn-profile-viewer"), verb, log])

    def copier(self, log):
        output = self.path("copy.log")
        return Program("cp", ["cp", log, output], output)

    def recoverer(self, log, *options, status=0):
        output = self.path("recovered.log")
        command = [self.tool("vyn-profile-viewer"), "recover", log, "-o", output, *options]
        return Program(" ".join(["recover", *options]), command, output, status)

    def damaged(self, log):
        """A copy with a byte of its middle chunk changed, so that the chunk is no longer sound."""
        path = self.path("damaged.log")
        shutil.copyfile(log, path)
        with open(path, "r+b") as file:
            middle = os.path.getsize(path) // 2
            length = int.from_bytes(file.read(4), "little")
            while file.tell() + length < middle:
                file.seek(length, os.SEEK_CUR)
                length = int.from_bytes(file.read(4), "little")
            file.write(b"\xff" * 4)  # the offset of its root table
        return path

    def plain(self, log):
        output = self.path("plain.json")
        return Program("plain baseline", [self.tool("plain_json"), log, output], output)

    def floor(self, log, size):
        output = self.path("floor.out")
        return Program("floor", [self.tool("read_and_write"), log, output, str(size)], output)

    def flatc(self, log):
        """flatc on the one chunk of a log, whose length has to go first."""
        chunk = self.path("flatc_chunk.bin")
        with open(log, "rb") as source, open(chunk, "wb") as target:
            target.write(unframed(source.read()))
        schema = os.path.join(self.source, "schema", "profile_log.fbs")
        command = ["flatc", "--json", "--strict-json", "--raw-binary", "--no-warnings",
                   "--allow-non-utf8", "-o", self.folder, schema, "--", chunk]
        return Program("flatc --json", command, self.path("flatc_chunk.json"))
