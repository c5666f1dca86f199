#pragma once

#include <cstddef>
#include <cstdint>
#include <iostream>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>
#include <thread>

namespace vyn::fuzz {

/// What a text of any length is remembered by. Outputs may be far larger than memory.
class Hash {
 public:
  Hash();
  ~Hash();
  Hash(const Hash&) = delete;
  Hash& operator=(const Hash&) = delete;

  void add(const void* bytes, std::size_t size);
  std::uint64_t value() const;

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

/// While it lives, what goes to std::cout is hashed and goes nowhere else.
class HashedConsole {
 public:
  explicit HashedConsole(Hash& hash) : m_buffer(hash), m_previous(std::cout.rdbuf(&m_buffer)) {}
  ~HashedConsole() { std::cout.rdbuf(m_previous); }
  HashedConsole(const HashedConsole&) = delete;
  HashedConsole& operator=(const HashedConsole&) = delete;

 private:
  class Buffer : public std::streambuf {
   public:
    explicit Buffer(Hash& hash) : m_hash(hash) {}

   protected:
    std::streamsize xsputn(const char* text, std::streamsize length) override {
      m_hash.add(text, static_cast<std::size_t>(length));
      return length;
    }
    int overflow(int character) override {
      const char byte = traits_type::to_char_type(character);
      m_hash.add(&byte, character == traits_type::eof() ? 0 : 1);
      return traits_type::not_eof(character);
    }

   private:
    Hash& m_hash;
  };

  Buffer m_buffer;
  std::streambuf* m_previous;
};

/// A file that can be written to once; what is written is hashed and kept nowhere.
class HashedFile {
 public:
  HashedFile();
  ~HashedFile();
  HashedFile(const HashedFile&) = delete;
  HashedFile& operator=(const HashedFile&) = delete;

  std::string path() const;

  /// The hash of what was written. Writers have closed the file by then.
  std::uint64_t finish();

 private:
  int m_readEnd = -1;
  int m_writeEnd = -1;
  Hash m_hash;
  std::thread m_thread;  // reads what is written
};

}  // namespace vyn::fuzz
