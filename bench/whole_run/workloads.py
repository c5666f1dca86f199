"""The logs that the bench reads, and the programs that it runs on them."""

import os
import subprocess

from measure import Program


class Workloads:
    def __init__(self, binaries, source, folder):
        self.binaries = binaries
        self.source = source
        self.folder = folder

    def path(self, name):
        return os.path.join(self.folder, name)

    def tool(self, name):
        return os.path.join(self.binaries, name)

    def log(self, name, size, chunk_size):
        """A log of about `size`, the same bytes at every run."""
        path = self.path(name)
        subprocess.run(
            [self.tool("vyn-make-log"), "-o", path, "--size", size, "--chunk-size", chunk_size],
            check=True,
        )
        return path

    def viewer(self, log, reader="json"):
        output = self.path("viewer.out")
        command = [self.tool("vyn-profile-viewer"), "view", log, "-o", output, "-r", reader]
        return Program(f"vyn-profile-viewer ({reader})", command, output)

    def exporter(self, log, output=None):
        output = output or self.path("export.json")
        command = [self.tool("vyn-profile-viewer"), "export", "json", log, "-o", output]
        return Program("export json", command, output)

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
            length = int.from_bytes(source.read(4), "little")
            assert length == os.path.getsize(log) - 4, "the log has more than one chunk"
            target.write(source.read())
        schema = os.path.join(self.source, "schema", "profile_log.fbs")
        command = ["flatc", "--json", "--strict-json", "--raw-binary", "--no-warnings",
                   "--allow-non-utf8", "-o", self.folder, schema, "--", chunk]
        return Program("flatc --json", command, self.path("flatc_chunk.json"))
