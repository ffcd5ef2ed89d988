#include "json/streaming/ValueSkipper.h"

#include <string_view>

namespace velmora::internal {

void ValueSkipper::begin(std::size_t outerDepth) {
  outerDepth_ = outerDepth;
  depth_ = outerDepth;
  expected_ = Expected::value;
}

ValueSkipper::Progress ValueSkipper::skip(TokenCursor& tokens, bool endsInString) {
  while (!tokens.atEnd()) {
    const Expected before = expected_;
    if (!takeNext(tokens)) {
      return Progress::broken;
    }
    if (endsInString && tokens.atEnd()) {
      // The rest of the string is still expected.
      expected_ = before;
      return Progress::atEndOfChunk;
    }
    if (isComplete()) {
      return Progress::complete;
    }
  }
  return Progress::atEndOfChunk;
}

bool ValueSkipper::takeNext(TokenCursor& tokens) {
  switch (expected_) {
    case Expected::valueOrEnd:
      return tokens.isNext(']') ? close(tokens) : takeValue(tokens);
    case Expected::value:
      return takeValue(tokens);
    case Expected::keyOrEnd:
      return tokens.isNext('}') ? close(tokens) : takeKey(tokens);
    case Expected::key:
      return takeKey(tokens);
    case Expected::colon:
      expected_ = Expected::value;
      return tokens.take(':');
    case Expected::commaOrEnd:
      break;
  }
  const bool isInObject = isObject_[depth_ - 1];
  if (tokens.take(',')) {
    expected_ = isInObject ? Expected::key : Expected::value;
    return true;
  }
  return tokens.isNext(isInObject ? '}' : ']') && close(tokens);
}

bool ValueSkipper::takeValue(TokenCursor& tokens) {
  expected_ = Expected::commaOrEnd;
  switch (*tokens.position()) {
    case '{':
      return open(tokens, /*isObject=*/true);
    case '[':
      return open(tokens, /*isObject=*/false);
    case '"': {
      std::string_view text;
      return tokens.take(text);
    }
    case 't':
    case 'f': {
      bool boolean = false;
      return tokens.take(boolean);
    }
    case 'n':
      return tokens.takeNull();
    default:
      return tokens.takeNumber();
  }
}

bool ValueSkipper::takeKey(TokenCursor& tokens) {
  expected_ = Expected::colon;
  std::string_view key;
  return tokens.take(key);
}

bool ValueSkipper::open(TokenCursor& tokens, bool isObject) {
  if (depth_ == maxJSONNesting) {
    return false;
  }
  isObject_[depth_] = isObject;
  ++depth_;
  expected_ = isObject ? Expected::keyOrEnd : Expected::valueOrEnd;
  return tokens.take(isObject ? '{' : '[');
}

bool ValueSkipper::close(TokenCursor& tokens) {
  --depth_;
  expected_ = Expected::commaOrEnd;
  return tokens.take(isObject_[depth_] ? '}' : ']');
}

}  // namespace velmora::internal
