// Invalid UTF-8.
#pragma once

#include "tests/text/Words.h"

#include <string>
#include <vector>

namespace velmora::internal {

/// No text begins with a valid code point.
inline const std::vector<std::string> notUTF8 = wordsOf(
    // Continuation bytes alone; overlong forms.
    "\x80 \xC0\x80 \xC0\xAF \xC1\xBF \xE0\x80\x80 \xE0\x9F\xBF \xF0\x80\x80\x80 \xF0\x8F\xBF\xBF "
    // Surrogates, code points beyond the last one, bytes that begin no code point.
    "\xED\xA0\x80 \xED\xBF\xBF \xF4\x90\x80\x80 \xF8\x88\x80 \xF8\x88\x80\x80\x80 \xFF \xFF\u0301 "
    // Incomplete code points.
    "\xC3 \xE2\x82 \xF0\x9F\x98 \xE2\x82/");

}  // namespace velmora::internal
