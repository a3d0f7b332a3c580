#pragma once
/// The family's strings: CCA_String holds narrow bytes, CCA_WString wide
/// characters. Both may hold NUL characters when filled through GetBuffer, are
/// always NUL-terminated in storage, and convert to a never-null pointer.

#include <cstring>
#include <cwchar>
#include <new>
#include <string>

#include <vxbase/Memory.h>

namespace vxbase_detail {

inline int TextLength(const char* text) { return static_cast<int>(std::strlen(text)); }
inline int TextLength(const wchar_t* text) { return static_cast<int>(std::wcslen(text)); }

/// Length of `text` bounded by `length`: a negative length means "up to the
/// NUL"; an explicit length is taken as it is (it may cover NULs).
template <typename CharT>
int BoundedLength(const CharT* text, int length) {
  if (text == nullptr) return 0;
  return length < 0 ? TextLength(text) : length;
}

}  // namespace vxbase_detail

/// The characters of `text` a caller means: all of it up to its NUL for a
/// negative `length`, else `length` characters but never past a NUL inside
/// them. 0 for a null text.
template <typename CharT>
int CA_TextLengthWithin(const CharT* text, int length) {
  if (text == nullptr) return 0;
  if (length < 0) return static_cast<int>(std::char_traits<CharT>::length(text));
  const CharT* nul = std::char_traits<CharT>::find(text, static_cast<std::size_t>(length), CharT(0));
  return nul ? static_cast<int>(nul - text) : length;
}

/// Shared implementation of the two string classes. Storage comes from
/// CA_AllocMemory; an empty string owns no storage.
template <typename CharT>
class CCA_StringT {
 public:
  CCA_StringT() = default;
  /// Copies `length` characters of `text` (-1: up to its NUL). A null text or
  /// a failed allocation gives an empty string.
  CCA_StringT(const CharT* text, int length = -1) {
    Assign(text, vxbase_detail::BoundedLength(text, length));
  }
  CCA_StringT(const CCA_StringT& other) { Assign(other.m_pData, other.m_nLength); }
  CCA_StringT(CCA_StringT&& other) noexcept { Swap(other); }
  ~CCA_StringT() { CA_FreeMemory(m_pData); }

  CCA_StringT& operator=(const CCA_StringT& other) {
    if (this != &other) {
      CCA_StringT copy(other);
      Swap(copy);
    }
    return *this;
  }
  CCA_StringT& operator=(CCA_StringT&& other) noexcept {
    Swap(other);
    return *this;
  }
  /// Replaces the contents with the NUL-terminated `text` (null: empty).
  CCA_StringT& operator=(const CharT* text) {
    CCA_StringT copy(text, -1);
    Swap(copy);
    return *this;
  }
  CCA_StringT& operator+=(const CCA_StringT& other) {
    Append(other.m_pData, other.m_nLength);
    return *this;
  }
  CCA_StringT& operator+=(const CharT* text) {
    Append(text, vxbase_detail::BoundedLength(text, -1));
    return *this;
  }
  CCA_StringT& operator+=(CharT ch) {
    Append(&ch, 1);
    return *this;
  }

  int GetLength() const { return m_nLength; }
  bool IsEmpty() const { return m_nLength == 0; }
  /// The character at `index`, or NUL when `index` is out of range.
  CharT GetAt(int index) const {
    return (index >= 0 && index < m_nLength) ? m_pData[index] : CharT(0);
  }
  CharT operator[](int index) const { return GetAt(index); }
  /// The last character, or NUL for an empty string.
  CharT GetLast() const { return GetAt(m_nLength - 1); }
  /// Never null: an empty string gives a pointer to an empty text.
  operator const CharT*() const { return c_str(); }
  const CharT* c_str() const {
    static const CharT kEmpty[1] = {CharT(0)};
    return m_pData ? m_pData : kEmpty;
  }

  /// A writable buffer of at least `minLength` characters (plus a NUL) that
  /// keeps the current contents; nullptr when memory cannot be obtained.
  /// Finish with ReleaseBuffer.
  CharT* GetBuffer(int minLength) {
    if (minLength < m_nLength) minLength = m_nLength;
    if (!Reserve(minLength)) return nullptr;
    return m_pData;
  }
  /// Fixes the length after GetBuffer: `newLength` characters (-1: up to the
  /// first NUL), clamped to the buffer's capacity.
  void ReleaseBuffer(int newLength = -1) {
    if (m_pData == nullptr) {
      m_nLength = 0;
      return;
    }
    if (newLength < 0) newLength = vxbase_detail::TextLength(m_pData);
    if (newLength > m_nCapacity) newLength = m_nCapacity;
    m_nLength = newLength;
    m_pData[m_nLength] = CharT(0);
  }

  /// Replaces every `from` by `to`; returns how many were replaced.
  int Replace(CharT from, CharT to) {
    int count = 0;
    for (int i = 0; i < m_nLength; ++i) {
      if (m_pData[i] == from) {
        m_pData[i] = to;
        ++count;
      }
    }
    return count;
  }
  /// Removes up to `count` characters from `index` (clamped to the string);
  /// returns the new length.
  int Delete(int index, int count = 1) {
    if (index < 0) index = 0;
    if (count <= 0 || index >= m_nLength) return m_nLength;
    if (count > m_nLength - index) count = m_nLength - index;
    std::memmove(m_pData + index, m_pData + index + count,
                 sizeof(CharT) * (m_nLength - index - count + 1));
    m_nLength -= count;
    return m_nLength;
  }
  /// Inserts `ch` before `index` (clamped to 0 ... length); returns the new
  /// length, unchanged when memory cannot be obtained.
  int Insert(int index, CharT ch) {
    if (index < 0) index = 0;
    if (index > m_nLength) index = m_nLength;
    if (!Reserve(m_nLength + 1)) return m_nLength;
    std::memmove(m_pData + index + 1, m_pData + index,
                 sizeof(CharT) * (m_nLength - index + 1));
    m_pData[index] = ch;
    return ++m_nLength;
  }
  /// Appends `length` characters of `text`; nothing on allocation failure.
  void Append(const CharT* text, int length) {
    if (text == nullptr || length <= 0) return;
    if (text >= m_pData && text < m_pData + m_nLength) {
      CCA_StringT self_copy(text, length);  // source would move with Reserve
      Append(self_copy.m_pData, length);
      return;
    }
    if (!Reserve(m_nLength + length)) return;
    std::memcpy(m_pData + m_nLength, text, sizeof(CharT) * length);
    m_nLength += length;
    m_pData[m_nLength] = CharT(0);
  }
  void Empty() {
    CCA_StringT empty;
    Swap(empty);
  }

  /// Orders by character values, NULs and length included.
  int Compare(const CharT* text, int length) const {
    const int common = m_nLength < length ? m_nLength : length;
    for (int i = 0; i < common; ++i) {
      if (m_pData[i] != text[i]) return m_pData[i] < text[i] ? -1 : 1;
    }
    return m_nLength == length ? 0 : (m_nLength < length ? -1 : 1);
  }
  int Compare(const CCA_StringT& other) const { return Compare(other.c_str(), other.m_nLength); }

  friend bool operator==(const CCA_StringT& a, const CCA_StringT& b) { return a.Compare(b) == 0; }
  friend bool operator==(const CCA_StringT& a, const CharT* b) {
    return a.Compare(b ? b : CCA_StringT().c_str(), vxbase_detail::BoundedLength(b, -1)) == 0;
  }
  friend bool operator==(const CharT* a, const CCA_StringT& b) { return b == a; }
  friend bool operator!=(const CCA_StringT& a, const CCA_StringT& b) { return !(a == b); }
  friend bool operator!=(const CCA_StringT& a, const CharT* b) { return !(a == b); }
  friend bool operator!=(const CharT* a, const CCA_StringT& b) { return !(b == a); }
  friend bool operator<(const CCA_StringT& a, const CCA_StringT& b) { return a.Compare(b) < 0; }

 private:
  void Swap(CCA_StringT& other) noexcept {
    CharT* data = m_pData;
    m_pData = other.m_pData;
    other.m_pData = data;
    int length = m_nLength;
    m_nLength = other.m_nLength;
    other.m_nLength = length;
    int capacity = m_nCapacity;
    m_nCapacity = other.m_nCapacity;
    other.m_nCapacity = capacity;
  }

  void Assign(const CharT* text, int length) {
    if (text == nullptr || length <= 0 || !Reserve(length)) return;
    std::memcpy(m_pData, text, sizeof(CharT) * length);
    m_nLength = length;
    m_pData[length] = CharT(0);
  }

  /// Makes room for `length` characters and a NUL; false on failure, with the
  /// string unchanged.
  bool Reserve(int length) {
    if (length < 0) return false;
    if (m_pData != nullptr && length <= m_nCapacity) return true;
    int capacity = length;
    if (m_pData != nullptr && capacity < m_nCapacity + m_nCapacity / 2) {
      capacity = m_nCapacity + m_nCapacity / 2;  // amortise repeated appends
    }
    void* block = CA_ReallocMemory(m_pData, sizeof(CharT) * (static_cast<std::size_t>(capacity) + 1));
    if (block == nullptr) return false;
    m_pData = static_cast<CharT*>(block);
    if (m_nCapacity == 0) m_pData[0] = CharT(0);
    m_nCapacity = capacity;
    return true;
  }

  CharT* m_pData = nullptr;
  int m_nLength = 0;
  int m_nCapacity = 0;
};

/// Narrow string: bytes of UTF-8 or of the local encoding.
class CCA_String : public CCA_StringT<char> {
 public:
  using CCA_StringT<char>::CCA_StringT;
  using CCA_StringT<char>::operator=;
  CCA_String() = default;
  CCA_String(const CCA_StringT<char>& other) : CCA_StringT<char>(other) {}
  CCA_String(CCA_StringT<char>&& other) noexcept : CCA_StringT<char>(static_cast<CCA_StringT<char>&&>(other)) {}
};

/// Wide string: one code point per wchar_t on Linux, UTF-16 on Windows.
class CCA_WString : public CCA_StringT<wchar_t> {
 public:
  using CCA_StringT<wchar_t>::CCA_StringT;
  using CCA_StringT<wchar_t>::operator=;
  CCA_WString() = default;
  CCA_WString(const CCA_StringT<wchar_t>& other) : CCA_StringT<wchar_t>(other) {}
  CCA_WString(CCA_StringT<wchar_t>&& other) noexcept
      : CCA_StringT<wchar_t>(static_cast<CCA_StringT<wchar_t>&&>(other)) {}
};
