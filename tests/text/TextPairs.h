// Pairs of texts that are canonically equal or not, for all code that compares texts.
#pragma once

#include <string_view>

namespace velmora::internal {

struct TextPair {
  std::string_view name;
  std::string_view a;
  std::string_view b;
  bool areEqual;
};

inline constexpr TextPair textPairs[] = {
    {"empty", "", "", true},
    {"ascii", "/Users/a", "/Users/a", true},
    {"nul", {"a\0b", 3}, {"a\0b", 3}, true},
    {"accent", "\u00e9", "e\u0301", true},
    {"accentAtEnd", "/caf\u00e9", "/cafe\u0301", true},
    {"accentBeforeASCII", "/\u00e9t\u00e9/x", "/e\u0301te\u0301/x", true},
    {"twoAccentsInEitherOrder", "q\u0307\u0323", "q\u0323\u0307", true},
    {"twoAccentsHalfComposed", "\u1e69", "s\u0307\u0323", true},
    {"kelvinSign", "\u212a", "K", true},
    {"angstromSign", "\u212b", "A\u030a", true},
    {"greekQuestionMark", "\u037e", ";", true},
    {"enQuad", "\u2000", "\u2002", true},
    {"compatibilityIdeograph", "\uf900", "\u8c48", true},
    {"compositionExclusion", "\u0958", "\u0915\u093c", true},
    {"compositionExclusionBeyondBMP", "\U0001D15E", "\U0001D157\U0001D165", true},
    {"hangul", "\ud55c", "\u1112\u1161\u11ab", true},
    {"hangulHalfComposed", "\ud55c", "\ud558\u11ab", true},
    {"hangulWithoutFinal", "\ud558", "\u1112\u1161", true},
    {"kana", "\u304c", "\u304b\u3099", true},
    {"twoStartersCompose", "\u09cb", "\u09c7\u09be", true},
    {"fourCodePoints", "\u1f82", "\u03b1\u0313\u0300\u0345", true},
    {"beyondBMP", "\U0001109A", "\U00011099\U000110BA", true},
    {"notUTF8", "\xFF", "\xFF", true},
    {"otherBytesNotUTF8", "\xFF", "\xFE", false},
    {"notUTF8BeforeAccent", "\xFF\u00e9", "\xFF\u0065\u0301", false},
    {"notUTF8AndReplacement", "\xFF", "\ufffd", false},
    {"emptyAndNot", "", "/", false},
    {"emptyAndNul", "", {"\0", 1}, false},
    {"nulAtEnd", "a", {"a\0", 2}, false},
    {"case", "/a", "/A", false},
    {"caseOfAccented", "\u00e9", "\u00c9", false},
    {"longer", "/a", "/a/", false},
    {"longerByAMark", "e", "e\u0301", false},
    {"longerByAMarkThatComposes", "e", "\u00e9", false},
    {"otherLetter", "/a", "/b", false},
    {"otherAccent", "\u00e9", "\u00e8", false},
    {"marksOfOneClassSwapped", "a\u0300\u0301", "a\u0301\u0300", false},
    {"markBeforeLetter", "\u0301e", "e\u0301", false},
    {"compatibilityOnly", "\ufb01", "fi", false},
    {"widthOnly", "\uff21", "A", false},
    {"sharpS", "\u00df", "ss", false},
    {"lineEnds", "\r\n", "\n", false},
    {"joinerOnly", "a\u200d", "a", false},
    {"starterBetweenSyllableParts", "\uac00", "\uac00\u11a7", false},
    {"vowelAfterJamo", "\u1100\u1161", "\u1100\u1161\u11a7", false},
    {"emoji", "\U0001F600", "\U0001F601", false},
    {"ideographs", "\u65e5", "\u6708", false},
};

}  // namespace velmora::internal
