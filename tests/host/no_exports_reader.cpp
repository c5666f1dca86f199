// A library, but not of a reader.

extern "C" __attribute__((visibility("default"))) int somethingElse() { return 0; }
