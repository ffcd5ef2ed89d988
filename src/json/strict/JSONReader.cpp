// Three steps. TokenFinder finds the tokens, and checks UTF-8 and the ends of strings. GrammarCheck
// walks over the tokens with a stack of open containers of its own, so that a deep document cannot
// overflow the program's stack. On its way it rewrites the document for the values: it resolves the
// escapes of each string in place, and replaces the token of each opening bracket by an index into
// the list of containers, which tells where the container ends.
#include "json/strict/JSONReader.h"

#include "json/DecodingError.h"
#include "json/ExactInteger.h"
#include "json/JSONString.h"
#include "text/UTF8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace velmora::internal {

namespace {

[[noreturn]] void refuse(const char* description, std::optional<std::size_t> byteOffset) {
  throw DecodingError(DecodingErrorKind::dataCorrupted, description, byteOffset);
}

/// Refuses a document that has a control character in a string, or a string without an end.
[[noreturn]] void refuseBrokenString(std::string_view document) {
  bool isInString = false;
  std::size_t lastQuote = 0;
  for (std::size_t position = 0; position < document.size(); ++position) {
    const char byte = document[position];
    if (byte == '"') {
      isInString = !isInString;
      lastQuote = position;
    } else if (byte == '\\') {
      if (!isInString) {
        // For TokenFinder, a quote after it begins no string.
        refuse("A backslash stands outside of strings.", position);
      }
      // An escaped quote ends no string. An escaped control character is a fault, too.
      position += document.substr(position + 1, 1).find_first_of("\"\\") == 0 ? 1 : 0;
    } else if (isInString && static_cast<unsigned char>(byte) < 0x20) {
      refuse("A string holds an unescaped control character.", position);
    }
  }
  refuse("A string does not end.", lastQuote);
}

std::size_t notUTF8Offset(std::string_view document) {
  std::size_t position = 0;
  while (position < document.size()) {
    const CodePoint step = codePointAt(document, position);
    if (!step.isUTF8()) {
      break;
    }
    position += step.length;
  }
  return position;
}

/// The tokens of `document`. Refuses one that is not UTF-8, and one with a broken string.
FoundTokens findTokens(TokenFinder& finder, std::string_view document) {
  const FoundTokens tokens = finder.find(document);
  switch (tokens.fault) {
    case TokenFault::none:
      break;
    case TokenFault::empty:
      refuse("The document is empty.", std::nullopt);
    case TokenFault::notUTF8:
      refuse("The document is not UTF-8.", notUTF8Offset(document));
    case TokenFault::unclosedString:
    case TokenFault::controlCharacter:
      refuseBrokenString(document);
  }
  return tokens;
}

/// The most memory that reading `document` takes, if each byte that may begin a token does. A token
/// is an index, and a list of containers that has just grown has room for three times its content.
std::size_t memoryFor(std::string_view document) {
  const auto tokenCount = static_cast<std::size_t>(std::ranges::count_if(document, [](char byte) {
    return std::string_view("{}[]:,").find(byte) != std::string_view::npos;
  }));
  const auto containerCount = static_cast<std::size_t>(
      std::ranges::count_if(document, [](char byte) { return byte == '{' || byte == '['; }));
  // A scalar lies between two of these tokens.
  return document.size() + (2 * tokenCount + 1) * sizeof(std::uint32_t) +
         3 * containerCount * sizeof(JSONContainer);
}

/// Checks the grammar, resolves escapes, and lists the containers.
class GrammarCheck {
 public:
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): elements of open_ are written first.
  GrammarCheck(char* bytes, std::uint32_t* tokens, const std::uint32_t* end,
               std::vector<JSONContainer>& containers)
      : bytes_(bytes), token_(tokens), end_(end), containers_(containers) {}

  void run() {
    readValue();
    while (depth_ > 0) {
      readRestOfMemberOrElement();
    }
    if (token_ != end_) {
      refuseToken("Something follows the document's value.");
    }
  }

 private:
  enum class Container { array, object };

  struct OpenContainer {
    std::uint32_t* token;
    Container kind;
  };

  [[nodiscard]] char firstByte() const { return bytes_[*token_]; }

  [[noreturn]] void refuseToken(const char* description) const {
    refuse(token_ == end_ ? "The document ends early." : description, *token_);
  }

  /// Reads a value. If it is a container with content, reads up to the end of its first value.
  void readValue() {
    while (true) {
      switch (firstByte()) {
        case '{':
          open(Container::object);
          if (firstByte() == '}') {
            close();
            return;
          }
          readKey();
          break;
        case '[':
          open(Container::array);
          if (firstByte() == ']') {
            close();
            return;
          }
          break;
        case '"':
          readString();
          return;
        case 't':
          readLiteral("true");
          return;
        case 'f':
          readLiteral("false");
          return;
        case 'n':
          readLiteral("null");
          return;
        default:
          readNumber();
          return;
      }
    }
  }

  void readRestOfMemberOrElement() {
    const bool isInObject = open_[depth_ - 1].kind == Container::object;
    const char byte = firstByte();
    if (byte == ',') {
      ++token_;
      if (isInObject) {
        readKey();
      }
      readValue();
    } else if (byte == (isInObject ? '}' : ']')) {
      close();
    } else {
      refuseToken(isInObject ? "Expected a comma or the end of the object."
                             : "Expected a comma or the end of the array.");
    }
  }

  void open(Container kind) {
    if (depth_ == maxJSONNesting) {
      refuseToken("Arrays and objects lie too deeply in each other.");
    }
    open_[depth_] = {.token = token_, .kind = kind};
    ++depth_;
    const auto place = static_cast<std::uint32_t>(containers_.size());
    containers_.push_back({.byteOffset = *token_, .tokenCount = 0});
    *token_ = JSONDocument::containerFlag | place;
    ++token_;
  }

  void close() {
    ++token_;
    --depth_;
    std::uint32_t* const opening = open_[depth_].token;
    containers_[*opening & ~JSONDocument::containerFlag].tokenCount =
        static_cast<std::uint32_t>(token_ - opening);
  }

  void readKey() {
    if (firstByte() != '"') {
      refuseToken("Expected a key.");
    }
    readString();
    if (firstByte() != ':') {
      refuseToken("Expected a colon after the key.");
    }
    ++token_;
  }

  void readString() {
    const std::uint32_t opening = *token_;
    const std::uint32_t closing = lastByteOfToken();
    if (closing == opening || bytes_[closing] != '"') {
      refuseToken("A string does not end.");
    }
    if (nextBackslash_ < closing) {
      if (nextBackslash_ < opening) {
        findBackslash(opening);
      }
      if (nextBackslash_ < closing) {
        resolve(opening, closing);
        findBackslash(closing);
      }
    }
    ++token_;
  }

  void resolve(std::uint32_t opening, std::uint32_t closing) {
    const std::span<char> content(bytes_ + opening + 1, bytes_ + closing);
    const std::optional<std::size_t> length = resolveEscapes(content);
    if (!length.has_value()) {
      refuse("A string holds an escape that is none of JSON's.", opening);
    }
    const std::size_t vacated = content.size() - *length;
    std::memset(bytes_ + opening, JSONDocument::fillerByte, vacated);
    bytes_[opening + vacated] = '"';
    *token_ = static_cast<std::uint32_t>(opening + vacated);
  }

  void findBackslash(std::uint32_t from) {
    const void* const found = std::memchr(bytes_ + from, '\\', *end_ - from);
    nextBackslash_ = found == nullptr
                         ? *end_
                         : static_cast<std::uint32_t>(static_cast<const char*>(found) - bytes_);
  }

  void readLiteral(std::string_view literal) {
    if (tokenText() != literal) {
      refuseToken("Expected a value.");
    }
    ++token_;
  }

  void readNumber() {
    if (!isJSONNumber(tokenText())) {
      refuseToken("Expected a value.");
    }
    ++token_;
  }

  [[nodiscard]] std::string_view tokenText() const {
    return {bytes_ + *token_, token_ == end_ ? 0 : lastByteOfToken() + 1 - *token_};
  }

  [[nodiscard]] std::uint32_t lastByteOfToken() const {
    return endOfJSONToken(bytes_, token_[1]) - 1;
  }

  char* bytes_;
  std::uint32_t* token_;
  /// The end of the tokens, where a sentinel is the length of the document.
  const std::uint32_t* end_;
  std::vector<JSONContainer>& containers_;
  std::array<OpenContainer, maxJSONNesting> open_;
  std::size_t depth_ = 0;
  /// The offset of the first backslash that is not known to have been passed.
  std::uint32_t nextBackslash_ = 0;
};

}  // namespace

JSONValue JSONReader::read(std::string& bytes) {
  if (bytes.size() > maxJSONDocumentLength) {
    refuse("The document is too long.", std::nullopt);
  }
  // Most documents are much shorter than the limit, whatever they hold.
  constexpr std::size_t mostMemoryPerByte = 33;
  if (bytes.size() > maxMemory_ / mostMemoryPerByte && memoryFor(bytes) > maxMemory_) {
    refuse("The document takes too much memory.", std::nullopt);
  }
  if (bytes.starts_with(byteOrderMark)) {
    std::ranges::fill_n(bytes.begin(), byteOrderMark.size(), ' ');
  }
  const FoundTokens tokens = findTokens(finder_, bytes);
  containers_.clear();
  GrammarCheck(bytes.data(), tokens.first, tokens.first + tokens.count, containers_).run();
  return {{.bytes = bytes.data(), .containers = containers_.data()}, tokens.first};
}

}  // namespace velmora::internal
