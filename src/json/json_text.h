#pragma once

#include <flatbuffers/flatbuffers.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "json/json_keys.h"

namespace vyn::profiling {

/// Room for a part of a long text. Large, for two threads may take turns with it.
using TextBlock = std::array<char, std::size_t{1024} * 1024>;

/// Takes a text in pieces. May throw, and then gets no more of it.
class TextSink {
 public:
  virtual ~TextSink() = default;

  virtual void write(std::string_view text) = 0;

  /// Takes the first `size` bytes of a block as the next piece and hands out a block for the one
  /// after it: the same, or another one while this is still being written.
  virtual std::unique_ptr<TextBlock> exchange(std::unique_ptr<TextBlock> block, std::size_t size) {
    write({block->data(), size});
    return block;
  }
};

/// A value is NaN or infinite, which JSON cannot hold.
class UnwritableNumber : public std::domain_error {
 public:
  UnwritableNumber() : domain_error("a value is not a number") {}
};

/// Writes JSON text from its parts, sent in document order: byte for byte what RapidJSON's pretty
/// writer makes of the same document, without one. What stands before a member is prepared for each
/// depth and key, so that a member costs two or three copies.
class JsonText {
 public:
  explicit JsonText(TextSink& sink)
      : m_sink(&sink), m_block(std::make_unique_for_overwrite<TextBlock>()) {}

  void startObject() { start('{', false); }
  void endObject() { end('}'); }
  void startArray() { start('[', true); }
  void endArray() { end(']'); }

  /// The name of the member whose value comes next.
  void key(JsonKey key) { putPiece(piecesAt(m_open.size()).keys[static_cast<std::size_t>(key)]); }

  // Numbers and texts are members of objects only: no array of the document holds them.

  void number(std::uint32_t value) { number(static_cast<std::uint64_t>(value)); }
  void number(std::uint64_t value) { putInteger(value); }
  void number(std::int64_t value) { putInteger(value); }
  /// Throws UnwritableNumber.
  void number(double value);

  /// A text that needs no escaping.
  void constantText(std::string_view text) {
    put('"');
    put(text);
    put('"');
  }
  /// Any text.
  void copiedText(std::string_view text);
  /// A text of the log up to its first zero byte; an absent one reads as the empty text.
  void logText(const flatbuffers::String* text);

  /// Passes on what was written since the last block.
  void flush();

  /// What was not passed on yet, and all that is written from now on, goes to another sink.
  void redirect(TextSink& sink) { m_sink = &sink; }

 private:
  static constexpr std::size_t kBlockSize = std::tuple_size_v<TextBlock>;  // bytes
  static constexpr std::size_t kLongestInteger = 20;                       // bytes

  // An object or array that has begun.
  struct OpenValue {
    bool isArray;
    bool isEmpty;
  };

  // What stands before a member or an element, from the comma on; without it for the first one.
  struct Pieces {
    std::array<std::string, kJsonKeyNames.size()> keys;  // up to the blank behind the colon
    std::string lineBreak;                               // with the indentation
  };

  void start(char bracket, bool isArray) {
    if (!m_open.empty() && m_open.back().isArray) {
      putPiece(piecesAt(m_open.size()).lineBreak);
    }
    put(bracket);
    m_open.push_back({isArray, true});
  }

  void end(char bracket) {
    const bool isEmpty = m_open.back().isEmpty;
    m_open.pop_back();
    if (!isEmpty) {
      put(std::string_view(piecesAt(m_open.size()).lineBreak).substr(1));  // without the comma
    }
    put(bracket);
  }

  // The first member or element has no comma before it.
  void putPiece(std::string_view piece) {
    OpenValue& innermost = m_open.back();
    put(piece.substr(innermost.isEmpty ? 1 : 0));
    innermost.isEmpty = false;
  }

  template <typename Integer>
  void putInteger(Integer value) {
    char* place = room(kLongestInteger);
    m_used +=
        static_cast<std::size_t>(std::to_chars(place, place + kLongestInteger, value).ptr - place);
  }

  void put(char character) {
    *room(1) = character;
    ++m_used;
  }

  void put(std::string_view text) {
    if (text.size() > kBlockSize) {
      putLong(text);
      return;
    }
    std::memcpy(room(text.size()), text.data(), text.size());
    m_used += text.size();
  }

  // Where the next `size` bytes go; not more than a block.
  char* room(std::size_t size) {
    if (size > kBlockSize - m_used) {
      flush();
    }
    return m_block->data() + m_used;
  }

  const Pieces& piecesAt(std::size_t depth) {
    if (depth >= m_pieces.size()) {
      preparePieces(depth);
    }
    return *m_pieces[depth];
  }

  void putLong(std::string_view text);
  void putEscaped(std::string_view text);
  void preparePieces(std::size_t depth);

  TextSink* m_sink;
  std::unique_ptr<TextBlock> m_block;
  std::size_t m_used = 0;
  std::vector<OpenValue> m_open;
  std::vector<std::unique_ptr<Pieces>> m_pieces;  // by depth
};

}  // namespace vyn::profiling
