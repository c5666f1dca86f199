#include "host/output/mapped_file.h"

#include <sys/mman.h>

#include <cerrno>

#include "files/file_error.h"

namespace vyn::host {

MappedFile::MappedFile(const files::NamedFile& file) : m_size(files::sizeOf(file)) {
  if (m_size == 0) {
    return;  // mmap refuses to map an empty file
  }
  void* bytes = mmap(nullptr, m_size, PROT_READ, MAP_SHARED, file.descriptor, 0);
  if (bytes == MAP_FAILED) {
    throw files::FileError(file.name, files::explain(errno));
  }
  m_bytes = static_cast<const char*>(bytes);
}

MappedFile::~MappedFile() {
  if (m_bytes != nullptr) {
    munmap(const_cast<char*>(m_bytes), m_size);
  }
}

}  // namespace vyn::host
