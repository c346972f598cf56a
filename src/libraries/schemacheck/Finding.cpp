#include "Finding.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "SchemaFiles.h"

namespace schemacheck {

namespace {

constexpr std::size_t kTabWidth = 8;

// How much of a line or of a message is kept. Without a limit, the findings on
// a long line would take the square of its length.
constexpr std::size_t kLongest = 1000;

// Whether a character in UTF-8 goes on with this byte.
bool goesOn(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::string shortened(std::string message) {
  if (message.size() > kLongest) {
    std::size_t end = kLongest;
    while (end > 0 && goesOn(message[end])) {
      --end;
    }
    message.replace(end, std::string::npos, "...");
  }
  return message;
}

// Sets the source line and the place in it.
void setLine(std::string_view line, std::size_t offset, Finding *finding) {
  std::size_t begin = 0;
  std::size_t end = line.size();
  if (line.size() > kLongest) {
    begin = offset - std::min(offset, kLongest / 2);
    end = std::min(end, begin + kLongest);
    while (begin < std::min(offset, end) && goesOn(line[begin])) {
      ++begin;
    }
    while (end < line.size() && end > offset && goesOn(line[end])) {
      --end;
    }
  }
  const std::string_view before = begin > 0 ? "..." : "";
  const std::string_view after = end < line.size() ? "..." : "";
  finding->sourceLine.reserve(before.size() + end - begin + after.size());
  finding->sourceLine.append(before)
      .append(line.substr(begin, end - begin))
      .append(after);
  finding->caret = before.size() + offset - begin;
}

bool isAscii(const std::string &text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 128;
  });
}

// The line as it is shown, and the column of a byte of it, from 0.
struct ShownLine {
  std::string text;
  std::size_t column = 0;
};

ShownLine show(const std::string &line, std::size_t offset) {
  ShownLine shown;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (i == offset) {
      shown.column = shown.text.size();
    }
    const char c = line[i];
    if (c == '\t') {
      shown.text.append(kTabWidth - shown.text.size() % kTabWidth, ' ');
    } else {
      shown.text += (c >= 0 && c < ' ') || c == 127 ? '?' : c;
    }
  }
  if (offset >= line.size()) {
    shown.column = shown.text.size();
  }
  return shown;
}

// Where a file stands in the order of reading, from 1; 0 for a directory or
// another file.
std::size_t fileNumber(const std::string &path) {
  const std::string_view name =
      std::string_view(path).substr(path.rfind('/') + 1);
  for (std::size_t i = 0; i < kSchemaFiles.size(); ++i) {
    if (name == kSchemaFiles[i].name) {
      return i + 1;
    }
  }
  return 0;
}

// What findings are sorted by first, and the finding.
struct Place {
  std::size_t file;  // the number of its file
  Finding *finding;
};

}  // namespace

Finding findingAt(Code code, const SourceText &text, std::size_t offset,
                  std::string message) {
  const Position position = text.position(offset);
  Finding finding = findingOn(code, text.name(), std::move(message));
  finding.line = position.line;
  finding.column = position.column;
  setLine(text.line(position.line),
          static_cast<std::size_t>(position.column) - 1, &finding);
  return finding;
}

Finding findingOn(Code code, std::string file, std::string message) {
  return {code, std::move(file), 0, 0, shortened(std::move(message)), "", 0};
}

std::string inQuotes(std::string_view text) {
  return std::string("'").append(text).append("'");
}

std::string toText(const Finding &finding) {
  const CodeDescription &code = describe(finding.code);
  const bool isPlaced = finding.line != 0;
  std::string text = finding.file;
  if (isPlaced) {
    text += ':' + std::to_string(finding.line) + ':' +
            std::to_string(finding.column);
  }
  text += code.severity == Severity::kError ? ": error: [" : ": warning: [";
  text += code.name;
  text += "] " + show(finding.message, 0).text + '\n';
  if (isPlaced) {
    const ShownLine shown = show(finding.sourceLine, finding.caret);
    text += shown.text + '\n';
    if (isAscii(finding.sourceLine)) {
      text += std::string(shown.column, ' ') + "^\n";
    }
  }
  return text;
}

void sortFindings(std::vector<Finding> *findings) {
  std::vector<Place> places;
  places.reserve(findings->size());
  for (Finding &finding : *findings) {
    places.push_back({fileNumber(finding.file), &finding});
  }
  const auto before = [](const Place &a, const Place &b) {
    const auto key = [](const Place &place) {
      const Finding &finding = *place.finding;
      return std::tie(place.file, finding.line, finding.column, finding.code,
                      finding.file, finding.message);
    };
    return key(a) < key(b);
  };
  const auto same = [&before](const Place &a, const Place &b) {
    return !before(a, b);  // nor b before a: they are sorted
  };
  std::sort(places.begin(), places.end(), before);
  places.erase(std::unique(places.begin(), places.end(), same), places.end());
  std::vector<Finding> sorted;
  sorted.reserve(places.size());
  for (const Place &place : places) {
    sorted.push_back(std::move(*place.finding));
  }
  findings->swap(sorted);
}

}  // namespace schemacheck
