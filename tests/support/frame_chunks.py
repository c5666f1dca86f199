"""Makes logs of texts in the JSON form of the schema, by way of flatc, and takes them apart."""

from support.programs import run

LENGTH_SIZE = 4  # bytes


def length_bytes(length):
    """A length as it stands in front of a chunk and of a text."""
    return length.to_bytes(LENGTH_SIZE, "little")


def framed(chunk):
    """A chunk with its length in front."""
    return length_bytes(len(chunk)) + chunk


def unframed(log):
    """The chunk of a log that has one alone."""
    chunk = log[LENGTH_SIZE:]
    assert log[:LENGTH_SIZE] == length_bytes(len(chunk)), "the log has more than one chunk"
    return chunk


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
