// Preloaded into a program to make its calls of the system fail. Told by the environment:
//   VYN_FAULT_CALL    read, write, close, fsync, rename, open, shrink for reads of a file that is
//                     cut to 1,000 bytes before them, spoil for writes that put a zero byte in
//                     place of one, or memory for malloc, calloc and realloc
//   VYN_FAULT_PATH    text in the path of the files whose calls count; for memory, calls count from
//                     the first opening of such a file on
//   VYN_FAULT_FIRST   which of these calls, from 1 on, is the first to fail; memory fails only once
//   VYN_FAULT_ERROR   the error's number, or 0 for reads and writes of one byte at a time
// EINTR hits every other call, so that the program gets on.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

long numberFrom(const char* variable) {
  const char* text = getenv(variable);
  return text != nullptr ? atol(text) : 0;
}

bool isFaultedCall(const char* call) {
  const char* faulted = getenv("VYN_FAULT_CALL");
  return faulted != nullptr && strcmp(faulted, call) == 0;
}

bool isFaultedPath(const char* path) {
  const char* part = getenv("VYN_FAULT_PATH");
  return part != nullptr && path != nullptr && strstr(path, part) != nullptr;
}

bool isFaultedFile(int descriptor) {
  char link[64];
  char path[PATH_MAX] = "";
  snprintf(link, sizeof(link), "/proc/self/fd/%d", descriptor);
  return readlink(link, path, sizeof(path) - 1) > 0 && isFaultedPath(path);
}

// Counts a call that may fail; true when this one does.
bool isDue() {
  static long count = 0;
  ++count;
  if (count < numberFrom("VYN_FAULT_FIRST")) {
    return false;
  }
  return numberFrom("VYN_FAULT_ERROR") != EINTR || count % 2 != 0;
}

bool fails(const char* call, int descriptor) {
  if (!isFaultedCall(call) || !isFaultedFile(descriptor) || !isDue()) {
    return false;
  }
  errno = static_cast<int>(numberFrom("VYN_FAULT_ERROR"));
  return true;
}

// Runs the call for `size` bytes; a fault leaves one of them, or none with an error.
template <typename Transfer>
ssize_t transfer(const char* call, int descriptor, size_t size, const Transfer& run) {
  if (!fails(call, descriptor)) {
    return run(size);
  }
  return errno == 0 ? run(size < 1 ? size : 1) : -1;
}

bool g_memoryCounts = false;

[[maybe_unused]] bool memoryFails() {
  static bool hasFailed = false;
  if (!g_memoryCounts || hasFailed || !isDue()) {
    return false;
  }
  hasFailed = true;
  errno = ENOMEM;
  return true;
}

FILE* openCounted(const char* function, const char* path, const char* mode) {
  using Open = FILE* (*)(const char*, const char*);
  const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, function));
  FILE* file = next(path, mode);
  if (isFaultedCall("memory") && isFaultedPath(path)) {
    g_memoryCounts = true;
  }
  return file;
}

}  // namespace

// NOLINTBEGIN(readability-identifier-naming,readability-inconsistent-declaration-parameter-name):
// the C library's names
extern "C" {

ssize_t read(int descriptor, void* bytes, size_t size) {
  if (fails("shrink", descriptor)) {
    char link[64];
    snprintf(link, sizeof(link), "/proc/self/fd/%d", descriptor);
    truncate(link, 1000);
  }
  return transfer("read", descriptor, size,
                  [&](size_t count) { return syscall(SYS_read, descriptor, bytes, count); });
}

ssize_t pread(int descriptor, void* bytes, size_t size, off_t offset) {
  return transfer("read", descriptor, size, [&](size_t count) {
    return syscall(SYS_pread64, descriptor, bytes, count, offset);
  });
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
  if (size > 0 && fails("spoil", descriptor)) {
    return syscall(SYS_write, descriptor, "", 1);
  }
  return transfer("write", descriptor, size,
                  [&](size_t count) { return syscall(SYS_write, descriptor, bytes, count); });
}

ssize_t writev(int descriptor, const struct iovec* parts, int count) {
  if (!fails("write", descriptor)) {
    return syscall(SYS_writev, descriptor, parts, count);
  }
  return errno == 0 ? syscall(SYS_write, descriptor, parts[0].iov_base, parts[0].iov_len > 0) : -1;
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t offset) {
  return transfer("write", descriptor, size, [&](size_t count) {
    return syscall(SYS_pwrite64, descriptor, bytes, count, offset);
  });
}

int fsync(int descriptor) {
  return fails("fsync", descriptor) ? -1 : static_cast<int>(syscall(SYS_fsync, descriptor));
}

int close(int descriptor) {
  const bool isFaulted = fails("close", descriptor);
  const int error = errno;
  const auto result = static_cast<int>(syscall(SYS_close, descriptor));
  errno = isFaulted ? error : errno;
  return isFaulted ? -1 : result;
}

int rename(const char* from, const char* to) noexcept {
  if (isFaultedCall("rename") && isFaultedPath(to) && isDue()) {
    errno = static_cast<int>(numberFrom("VYN_FAULT_ERROR"));
    return -1;
  }
  return static_cast<int>(syscall(SYS_rename, from, to));
}

int open(const char* path, int flags, ...) {
  if (isFaultedCall("open") && isFaultedPath(path) && isDue()) {
    errno = static_cast<int>(numberFrom("VYN_FAULT_ERROR"));
    return -1;
  }
  va_list rest;
  va_start(rest, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
  va_end(rest);
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

FILE* fopen(const char* path, const char* mode) { return openCounted("fopen", path, mode); }
FILE* fopen64(const char* path, const char* mode) { return openCounted("fopen64", path, mode); }

#ifndef __SANITIZE_ADDRESS__  // which has its own
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

void* malloc(size_t size) { return memoryFails() ? nullptr : __libc_malloc(size); }
void* calloc(size_t count, size_t size) {
  return memoryFails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, size_t size) {
  return memoryFails() ? nullptr : __libc_realloc(block, size);
}
#endif

}  // extern "C"
// NOLINTEND(readability-identifier-naming,readability-inconsistent-declaration-parameter-name)
