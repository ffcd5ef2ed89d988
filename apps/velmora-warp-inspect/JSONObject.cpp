#include "JSONObject.h"

#include "Terminal.h"
#include "json/JSONWriting.h"

namespace velmora::inspect {

std::string jsonString(std::string_view text) {
  std::string json;
  appendJSONString(json, repairedUTF8(text));
  return json;
}

std::string jsonArray(const std::vector<std::string>& elements) {
  std::string json = "[";
  for (const std::string& element : elements) {
    json.append(json.size() > 1 ? "," : "").append(element);
  }
  return json + "]";
}

void JSONObject::addText(std::string_view key, std::string_view value) {
  addJSON(key, jsonString(value));
}

void JSONObject::addNumber(std::string_view key, std::size_t value) {
  addJSON(key, std::to_string(value));
}

void JSONObject::addFlag(std::string_view key, bool value) {
  addJSON(key, value ? "true" : "false");
}

void JSONObject::addNull(std::string_view key) { addJSON(key, "null"); }

void JSONObject::addJSON(std::string_view key, std::string_view json) {
  members_.append(members_.size() > 1 ? "," : "").append(jsonString(key)).append(":").append(json);
}

}  // namespace velmora::inspect
