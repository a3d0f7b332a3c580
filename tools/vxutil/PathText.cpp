#include "PathText.h"

#include <cctype>
#include <cfloat>
#include <cmath>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

// The numbers each command letter takes.
int ArgumentCount(char command) {
  switch (command) {
    case 'M':
    case 'L':
      return 2;
    case 'Q':
      return 4;
    case 'C':
      return 6;
    case 'A':
      return 7;
    case 'Z':
      return 0;
    default:
      return -1;
  }
}

class PathTextReader {
 public:
  explicit PathTextReader(const std::string& text) : m_text(text.c_str()) {}

  // Skips spaces and commas; false at the end of the text.
  bool More() {
    while (*m_text != '\0' && (std::isspace(static_cast<unsigned char>(*m_text)) || *m_text == ',')) ++m_text;
    return *m_text != '\0';
  }
  bool AtLetter() const { return std::isalpha(static_cast<unsigned char>(*m_text)) != 0; }
  char TakeLetter() { return *m_text++; }

  bool TakeNumber(float& value) {
    if (!More() || AtLetter()) return false;
    errno = 0;
    char* end = nullptr;
    const double number = std::strtod(m_text, &end);
    if (end == m_text || errno != 0 || std::fabs(number) > FLT_MAX) return false;
    m_text = end;
    value = static_cast<float>(number);
    return true;
  }

  std::string Here() const { return std::string(m_text, strnlen(m_text, 12)); }

 private:
  const char* m_text;
};

void AddCommand(char command, const float* a, CCA_Path& path) {
  switch (command) {
    case 'M':
      path.MoveTo(a[0], a[1]);
      break;
    case 'L':
      path.LineTo(a[0], a[1]);
      break;
    case 'Q':
      path.QuadTo(a[0], a[1], a[2], a[3]);
      break;
    case 'C':
      path.CubicBezierTo(a[0], a[1], a[2], a[3], a[4], a[5]);
      break;
    case 'A':
      path.ArcTo(a[0], a[1], a[2], a[3], a[4], a[5], a[6]);
      break;
    default:
      path.Close();
      break;
  }
}

}  // namespace

bool ParsePathText(const std::string& text, CCA_Path& path, std::string& error) {
  PathTextReader reader(text);
  char command = 0;
  while (reader.More()) {
    if (reader.AtLetter()) {
      command = reader.TakeLetter();
      if (command == 'z') command = 'Z';  // closing has no relative form
      if (ArgumentCount(command) < 0) {
        error = std::string("unknown path command '") + command + "' (absolute M L Q C A Z only)";
        return false;
      }
    } else if (command == 0 || command == 'Z') {
      error = "path numbers without a command near '" + reader.Here() + "'";
      return false;
    } else if (command == 'M') {
      command = 'L';  // repeated pairs after a figure start are lines
    }
    float args[7];
    for (int i = 0; i < ArgumentCount(command); ++i) {
      if (!reader.TakeNumber(args[i])) {
        error = std::string("path command '") + command + "' expects " + std::to_string(ArgumentCount(command)) +
                " numbers, found '" + reader.Here() + "'";
        return false;
      }
    }
    AddCommand(command, args, path);
  }
  return true;
}
