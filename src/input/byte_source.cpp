#include "input/byte_source.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vyn::profiling {

FileSource::FileSource(const std::string& path) : m_file(path, std::ios::in | std::ios::binary) {
  std::error_code error;
  if (std::filesystem::is_regular_file(path, error)) {
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    m_size = error ? std::optional<std::uint64_t>() : size;
  }
}

std::size_t FileSource::read(std::uint8_t* to, std::size_t size) {
  m_file.read(reinterpret_cast<char*>(to), static_cast<std::streamsize>(size));
  return static_cast<std::size_t>(m_file.gcount());
}

void FileSource::seek(std::uint64_t offset) {
  m_file.clear(m_file.rdstate() & std::ios::badbit);  // its end may have been met
  m_file.seekg(static_cast<std::streamoff>(offset));
}

std::size_t MemorySource::read(std::uint8_t* to, std::size_t size) {
  const std::size_t count = std::min(size, m_rest.size());
  std::copy_n(m_rest.begin(), count, to);
  m_rest = m_rest.subspan(count);
  return count;
}

}  // namespace vyn::profiling
