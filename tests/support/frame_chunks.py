"""Makes logs of texts in the JSON form of the schema, by way of flatc."""

from support.programs import run


def framed(chunk):
    """A chunk with its length in front."""
    return len(chunk).to_bytes(4, "little") + chunk


def chunk_bytes(flatc, schema, text, folder):
    """The buffer that flatc makes of a text file; it leaves nothing else in the folder."""
    run(flatc, "--no-warnings", "--binary", "-o", folder, schema, text)
    binary = folder / f"{text.stem}.bin"
    buffer = binary.read_bytes()
    binary.unlink()
    return buffer


def write_log(log, flatc, schema, texts):
    """Writes a log of one chunk for each text file; returns its path."""
    log.write_bytes(b"".join(framed(chunk_bytes(flatc, schema, text, log.parent))
                             for text in texts))
    return log
