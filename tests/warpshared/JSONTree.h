// Documents that tests put together, change here and there, and write in several styles.
#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace velmora {

/// How a tree is written.
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

/// A value: JSON text as it stands, or an object or array of values.
class JSONTree {
 public:
  using Member = std::pair<std::string, JSONTree>;
  using Object = std::vector<Member>;
  using Array = std::vector<JSONTree>;

  JSONTree(std::string text) : value_(std::move(text)) {}
  JSONTree(const char* text) : value_(std::string(text)) {}
  JSONTree(Object members) : value_(std::move(members)) {}
  JSONTree(Array elements) : value_(std::move(elements)) {}

  /// The member at `key`, which must be there.
  JSONTree& operator[](std::string_view key) {
    for (Member& member : members()) {
      if (member.first == key) {
        return member.second;
      }
    }
    throw std::out_of_range("no member " + std::string(key));
  }

  /// The element at `index`, which must be there.
  JSONTree& operator[](std::size_t index) { return elements().at(index); }

  Object& members() { return std::get<Object>(value_); }
  Array& elements() { return std::get<Array>(value_); }

  void erase(std::string_view key) {
    if (std::erase_if(members(), [&](const Member& member) { return member.first == key; }) == 0) {
      throw std::out_of_range("no member " + std::string(key));
    }
  }

  [[nodiscard]] std::string text(const JSONStyle& style = jsonStyles.front()) const {
    std::string json;
    write(json, style, "\n");
    return json;
  }

 private:
  void write(std::string& json, const JSONStyle& style, const std::string& newLine) const {
    if (const auto* text = std::get_if<std::string>(&value_)) {
      writeText(json, *text, style);
    } else if (const auto* object = std::get_if<Object>(&value_)) {
      writeList(json, ordered(*object, style), "{}", style, newLine,
                [&](const Member& member, const std::string& inner) {
                  json += '"' + member.first + (style.isPretty ? "\" : " : "\":");
                  member.second.write(json, style, inner);
                });
    } else {
      writeList(json, pointers(std::get<Array>(value_)), "[]", style, newLine,
                [&](const JSONTree& element, const std::string& inner) {
                  element.write(json, style, inner);
                });
    }
  }

  template <class Item, class WriteItem>
  static void writeList(std::string& json, const std::vector<const Item*>& items,
                        std::string_view brackets, const JSONStyle& style,
                        const std::string& newLine, WriteItem writeItem) {
    const std::string inner = newLine + style.indentation;
    json += brackets.front();
    for (const Item* item : items) {
      json += item == items.front() ? "" : ",";
      json += style.isPretty ? inner : "";
      writeItem(*item, inner);
    }
    json += style.isPretty ? newLine : "";
    json += brackets.back();
  }

  static void writeText(std::string& json, const std::string& text, const JSONStyle& style) {
    for (const char character : text) {
      json += style.escapesSlashes && character == '/' ? "\\" : "";
      json += character;
    }
  }

  template <class Item>
  static std::vector<const Item*> pointers(const std::vector<Item>& items) {
    std::vector<const Item*> result;
    for (const Item& item : items) {
      result.push_back(&item);
    }
    return result;
  }

  static std::vector<const Member*> ordered(const Object& members, const JSONStyle& style) {
    std::vector<const Member*> result = pointers(members);
    if (style.order == JSONStyle::Order::reversed) {
      std::ranges::reverse(result);
    } else if (style.order == JSONStyle::Order::sorted) {
      std::ranges::stable_sort(
          result, {}, [](const Member* member) -> auto& { return member->first; });
    }
    return result;
  }

  std::variant<std::string, Object, Array> value_;
};

}  // namespace velmora
