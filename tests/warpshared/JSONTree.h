// Documents that tests build, change, and write in several styles.
#pragma once

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {

/// The style in which a tree is written.
struct JSONStyle {
  const char* name;
  enum class Order { asBuilt, reversed, sorted } order = Order::asBuilt;
  bool isPretty = false;
  bool escapesSlashes = false;
  const char* indentation = "  ";
};

inline const std::vector<JSONStyle> jsonStyles = {
    {"compact"},
    {"reversed", JSONStyle::Order::reversed},
    {"prettySortedEscaped", JSONStyle::Order::sorted, true, true},
    {"prettyFourBlanks", JSONStyle::Order::asBuilt, true, false, "    "},
};

/// A value: JSON text with ' for each quotation mark, or an object or array of values.
class JSONTree {
 public:
  /// The key of an array's element is empty.
  using Member = std::pair<std::string, JSONTree>;
  using Object = std::vector<Member>;
  using Array = std::vector<JSONTree>;

  JSONTree(std::string text) : text_(std::move(text)) { std::ranges::replace(text_, '\'', '"'); }
  JSONTree(const char* text) : JSONTree(std::string(text)) {}
  JSONTree(Object members) : brackets_("{}"), members_(std::move(members)) {}
  JSONTree(Array elements) : brackets_("[]") {
    for (JSONTree& element : elements) {
      members_.emplace_back("", std::move(element));
    }
  }

  /// The members of an object, or the elements of an array.
  Object& members() { return members_; }

  /// The member or element with this name or number, which must exist.
  JSONTree& operator[](std::string_view name) { return find(name)->second; }

  void erase(std::string_view name) { members_.erase(find(name)); }

  /// The value at a path such as "/entries/0/size"; this value at "".
  JSONTree& at(std::string_view path) {
    if (path.empty()) {
      return *this;
    }
    const std::size_t end = path.rfind('/');
    return at(path.substr(0, end))[path.substr(end + 1)];
  }

  /// Puts JSON text at a path. An empty text removes the value there. A last name that begins with
  /// "+" adds a member; "+" alone adds an element.
  void change(std::string_view path, std::string_view json) {
    if (path.empty()) {
      *this = std::string(json);
      return;
    }
    const std::size_t end = path.rfind('/');
    const std::string_view name = path.substr(end + 1);
    JSONTree& parent = at(path.substr(0, end));
    if (name.starts_with('+')) {
      parent.members_.emplace_back(name.substr(1), std::string(json));
    } else if (json.empty()) {
      parent.erase(name);
    } else {
      parent[name] = std::string(json);
    }
  }

  [[nodiscard]] std::string text(const JSONStyle& style = jsonStyles.front()) const {
    std::string json;
    write(json, style, "\n");
    return json;
  }

 private:
  Object::iterator find(std::string_view name) {
    const auto found = brackets_ == "[]" ? members_.begin() + std::stoi(std::string(name))
                                         : std::ranges::find(members_, name, &Member::first);
    if (found >= members_.end()) {
      throw std::out_of_range("nothing at " + std::string(name));
    }
    return found;
  }

  void write(std::string& json, const JSONStyle& style, const std::string& newLine) const {
    for (const char character : text_) {
      json += style.escapesSlashes && character == '/' ? "\\" : "";
      json += character;
    }
    if (brackets_.empty()) {
      return;
    }
    const std::string inner = newLine + style.indentation;
    char separator = brackets_.front();
    for (const Member* member : ordered(style.order)) {
      json += std::exchange(separator, ',');
      json += style.isPretty ? inner : "";
      if (brackets_ == "{}") {
        json += '"' + member->first + (style.isPretty ? "\" : " : "\":");
      }
      member->second.write(json, style, inner);
    }
    json += members_.empty() ? brackets_.substr(0, 1) : "";
    json += (style.isPretty ? newLine : "") + brackets_.back();
  }

  [[nodiscard]] std::vector<const Member*> ordered(JSONStyle::Order order) const {
    std::vector<const Member*> result;
    for (const Member& member : members_) {
      result.push_back(&member);
    }
    if (order == JSONStyle::Order::reversed && brackets_ == "{}") {
      std::ranges::reverse(result);
    } else if (order == JSONStyle::Order::sorted) {
      std::ranges::stable_sort(
          result, {}, [](const Member* member) -> auto& { return member->first; });
    }
    return result;
  }

  std::string text_;
  /// Empty for JSON text.
  std::string brackets_;
  Object members_;
};

}  // namespace velmora::internal
