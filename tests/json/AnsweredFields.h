// Answered documents with one field, "v", of some type.
#pragma once

#include "json/strict/JSONReader.h"
#include "json/strict/RecordDecoding.h"
#include "tests/json/Faults.h"
#include "tests/support/AnsweredDocuments.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {

template <class Value>
struct AnsweredField {
  Value v;
};

template <class Value>
struct RecordFields<AnsweredField<Value>> {
  static constexpr std::tuple list{RecordField{"v", &AnsweredField<Value>::v}};
};

/// Decodes all `count` documents of the file at `path`. `answer` writes a value in the format of
/// the file's answers.
template <class Value, std::invocable<const Value&> Answer>
void expectAnsweredFields(std::string_view path, std::size_t count, Answer answer) {
  const std::vector<AnsweredDocument> documents = readAnsweredDocuments(path);
  EXPECT_EQ(documents.size(), count);
  for (const AnsweredDocument& row : documents) {
    SCOPED_TRACE(row.name);
    std::string bytes = row.bytes;
    JSONReader reader;
    AnsweredField<Value> record{};
    try {
      decode(reader.read(bytes), record);
    } catch (const DecodingError& error) {
      ASSERT_NE(row.error(), nullptr) << describe(error);
      EXPECT_EQ(name(error.kind()), row.error()->kind);
      EXPECT_EQ(error.codingPath(), row.error()->codingPath);
      continue;
    }
    ASSERT_NE(row.okJSON(), nullptr);
    EXPECT_EQ(answer(record.v), *row.okJSON());
  }
}

}  // namespace velmora::internal
