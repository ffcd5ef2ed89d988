#include "tests/support/JSONRewriting.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace velmora {
namespace {

struct Member {
  std::string_view key;
  internal::JSONValue value;
};

/// Orders the members of each key in `shuffled` as in `members`.
void keepDuplicatesInOrder(const std::vector<Member>& members, std::vector<Member>& shuffled) {
  std::map<std::string_view, std::vector<internal::JSONValue>> values;
  for (const Member& member : members) {
    values[member.key].push_back(member.value);
  }
  std::map<std::string_view, std::size_t> used;
  for (Member& member : shuffled) {
    member.value = values[member.key][used[member.key]++];
  }
}

/// Keeps the remaining work on a stack instead of recursing.
class Rewriter {
 public:
  explicit Rewriter(const JSONRewriting& rewriting)
      : rewriting_(rewriting), random_(rewriting.shuffleSeed.value_or(0)) {}

  std::string run(internal::JSONValue value) {
    pending_.emplace_back(value);
    while (!pending_.empty()) {
      const std::variant<std::string, internal::JSONValue> next = std::move(pending_.back());
      pending_.pop_back();
      if (const auto* const text = std::get_if<std::string>(&next)) {
        json_ += *text;
      } else {
        write(std::get<internal::JSONValue>(next));
      }
    }
    return std::move(json_);
  }

 private:
  void write(internal::JSONValue value) {
    switch (value.type()) {
      case internal::JSONType::null:
        json_ += "null";
        break;
      case internal::JSONType::boolean:
        json_ += value.boolean() ? "true" : "false";
        break;
      case internal::JSONType::number:
        json_ += value.number();
        break;
      case internal::JSONType::string:
        internal::appendJSONString(json_, value.text(), rewriting_.slashes);
        break;
      case internal::JSONType::array:
        writeArray(value);
        break;
      case internal::JSONType::object:
        writeObject(value);
        break;
    }
  }

  void writeArray(internal::JSONValue array) {
    std::vector<internal::JSONValue> values;
    for (internal::JSONElements elements(array); !elements.atEnd(); elements.advance()) {
      values.push_back(elements.value());
    }
    json_ += punctuation("[");
    pending_.emplace_back(punctuation("]"));
    for (auto value = values.rbegin(); value != values.rend(); ++value) {
      pending_.emplace_back(*value);
      if (value + 1 != values.rend()) {
        pending_.emplace_back(punctuation(","));
      }
    }
  }

  void writeObject(internal::JSONValue object) {
    const std::vector<Member> members = membersOf(object);
    json_ += punctuation("{");
    pending_.emplace_back(punctuation("}"));
    for (auto member = members.rbegin(); member != members.rend(); ++member) {
      pending_.emplace_back(member->value);
      std::string key = member + 1 == members.rend() ? "" : punctuation(",");
      internal::appendJSONString(key, member->key, rewriting_.slashes);
      pending_.emplace_back(key + punctuation(":"));
    }
  }

  std::vector<Member> membersOf(internal::JSONValue object) {
    std::vector<Member> members;
    for (internal::JSONMembers rest(object); !rest.atEnd(); rest.advance()) {
      members.push_back({.key = rest.key(), .value = rest.value()});
    }
    if (rewriting_.isSorted) {
      std::ranges::stable_sort(members, {}, &Member::key);
    }
    if (rewriting_.shuffleSeed.has_value()) {
      std::vector<Member> shuffled = members;
      std::ranges::shuffle(shuffled, random_);
      keepDuplicatesInOrder(members, shuffled);
      return shuffled;
    }
    return members;
  }

  [[nodiscard]] std::string punctuation(std::string_view mark) const {
    return rewriting_.isSpacious ? " \t" + std::string(mark) + "\r\n" : std::string(mark);
  }

  const JSONRewriting& rewriting_;
  std::mt19937_64 random_;
  std::string json_;
  std::vector<std::variant<std::string, internal::JSONValue>> pending_;
};

}  // namespace

std::string rewritten(internal::JSONValue value, const JSONRewriting& rewriting) {
  return Rewriter(rewriting).run(value);
}

}  // namespace velmora
