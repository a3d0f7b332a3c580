// The compact text form of a value: RapidJSON's writer with its default
// flags, fed by a walk that does not recurse, through a sink that keeps the
// text within what a CCA_String holds. Strings and keys are escaped here,
// as the writer would, into room reserved in 64 bits.

#include <array>
#include <climits>
#include <cstddef>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "json/JsonWalk.h"
#include "json/RapidjsonWrapper.h"

namespace {

using TextBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, ThrowingAllocator>;
using TextWriter = rapidjson::Writer<TextBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

/// The longest text a CCA_String holds.
constexpr std::size_t kMaxText = INT_MAX;
/// More than any number, word or bracket takes, with its separator.
constexpr std::size_t kScalarRoom = 32;

/// The escape RapidJSON's writer uses for `c`: 0 for none, 'u' for \u00XX,
/// else the letter after the backslash.
constexpr char EscapeOf(unsigned char c) {
  switch (c) {
    case '"': return '"';
    case '\\': return '\\';
    case '\b': return 'b';
    case '\f': return 'f';
    case '\n': return 'n';
    case '\r': return 'r';
    case '\t': return 't';
    default: return c < 0x20 ? 'u' : 0;
  }
}

constexpr std::array<char, 256> kEscapes = [] {
  std::array<char, 256> table{};
  for (int c = 0; c < 256; ++c) table[c] = EscapeOf(static_cast<unsigned char>(c));
  return table;
}();

/// Bytes of `text` written as a JSON string, quotes included.
std::size_t EscapedLength(const char* text, std::size_t length) {
  std::size_t total = 2 + length;
  for (std::size_t i = 0; i < length; ++i) {
    const char escape = kEscapes[static_cast<unsigned char>(text[i])];
    if (escape != 0) total += escape == 'u' ? 5 : 1;
  }
  return total;
}

/// Passes the events of a walk to the writer while the text stays within
/// kMaxText; an event that would pass it ends the text after its separator,
/// as a NaN does.
class TextSink {
 public:
  TextSink(TextBuffer& buffer, TextWriter& writer) : m_buffer(buffer), m_writer(writer) {}

  bool Null() { return Room(rapidjson::kNullType) && m_writer.Null(); }
  bool Bool(bool b) { return Room(rapidjson::kTrueType) && m_writer.Bool(b); }
  bool Int(int i) { return Room(rapidjson::kNumberType) && m_writer.Int(i); }
  bool Uint(unsigned u) { return Room(rapidjson::kNumberType) && m_writer.Uint(u); }
  bool Int64(int64_t i) { return Room(rapidjson::kNumberType) && m_writer.Int64(i); }
  bool Uint64(uint64_t u) { return Room(rapidjson::kNumberType) && m_writer.Uint64(u); }
  bool Double(double d) { return Room(rapidjson::kNumberType) && m_writer.Double(d); }
  bool String(const char* text, rapidjson::SizeType length, bool) { return Text(text, length); }
  bool Key(const char* text, rapidjson::SizeType length, bool) { return Text(text, length); }
  bool StartObject() { return Room(rapidjson::kObjectType) && m_writer.StartObject(); }
  bool EndObject(rapidjson::SizeType members) { return Fits() && m_writer.EndObject(members); }
  bool StartArray() { return Room(rapidjson::kArrayType) && m_writer.StartArray(); }
  bool EndArray(rapidjson::SizeType elements) { return Fits() && m_writer.EndArray(elements); }

 private:
  bool Fits() const { return m_buffer.GetSize() + kScalarRoom <= kMaxText; }
  bool Room(rapidjson::Type type) { return Fits() || Stop(type); }

  /// Writes the separator the refused value would have followed; false.
  bool Stop(rapidjson::Type type) {
    m_writer.RawValue("", 0, type);
    return false;
  }

  /// A string or key: its worst case (six bytes a byte, two quotes) is
  /// reserved unless that might pass kMaxText; then it is measured.
  bool Text(const char* text, rapidjson::SizeType length) {
    const std::size_t size = m_buffer.GetSize();
    const std::size_t worst = 2 + 6 * std::size_t(length);
    if (size + worst + 1 <= kMaxText) return Quoted(text, length, worst);
    const std::size_t escaped = EscapedLength(text, length);
    if (size + escaped + 1 > kMaxText) return Stop(rapidjson::kStringType);
    return Quoted(text, length, escaped);
  }

  /// The writer places the separator; the string is escaped here, through
  /// a local cursor, into `room` bytes, and what is left over is given back.
  bool Quoted(const char* text, std::size_t length, std::size_t room) {
    static const char kHex[] = "0123456789ABCDEF";
    m_writer.RawValue("", 0, rapidjson::kStringType);
    char* const start = m_buffer.Push(room);
    char* out = start;
    *out++ = '"';
    for (std::size_t i = 0; i < length; ++i) {
      const unsigned char c = static_cast<unsigned char>(text[i]);
      const char escape = kEscapes[c];
      if (escape == 0) {
        *out++ = static_cast<char>(c);
        continue;
      }
      *out++ = '\\';
      *out++ = escape;
      if (escape == 'u') {
        *out++ = '0';
        *out++ = '0';
        *out++ = kHex[c >> 4];
        *out++ = kHex[c & 0xF];
      }
    }
    *out++ = '"';
    m_buffer.Pop(room - static_cast<std::size_t>(out - start));
    return true;
  }

  TextBuffer& m_buffer;
  TextWriter& m_writer;
};

}  // namespace

CCA_String RapidjsonWrapper::ToJsonString() const {
  TextBuffer buffer(nullptr, 256);
  TextWriter writer(buffer);
  TextSink sink(buffer, writer);
  // A NaN, an infinity or a text grown past kMaxText stops the walk: the
  // text written up to there is the result.
  json_walk::Walk(*Current(), sink);
  return CCA_String(buffer.GetString(), static_cast<int>(buffer.GetSize()));
}
