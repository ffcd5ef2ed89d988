#include "common/CommandArguments.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Words = std::vector<std::string>;

constexpr KnownOption known[] = {{.name = "check"},
                                 {.name = "kind", .form = OptionForm::value},
                                 {.name = "help", .form = OptionForm::last}};

/// The options as "name=value ", then each operand in brackets; the message of a UsageError
/// instead.
std::string parsed(const Words& arguments) {
  try {
    const CommandArguments result = parseArguments(arguments, known);
    std::string text;
    for (const CommandArguments::Option& option : result.options) {
      text += option.name + "=" + option.value + " ";
    }
    for (const std::string& operand : result.operands) {
      text += "[" + operand + "]";
    }
    return text;
  } catch (const UsageError& error) {
    return error.what();
  }
}

TEST(Arguments, areOptionsAndOperandsInAnyOrder) {
  const struct {
    Words arguments;
    std::string parsed;
  } rows[] = {
      {{}, ""},
      {{"a", "--check", "b"}, "check= [a][b]"},
      {{"--check", "--check"}, "check= check= "},
      {{"--kind", "x", "a"}, "kind=x [a]"},
      {{"--kind=x", "a"}, "kind=x [a]"},
      {{"--kind=", "a"}, "kind= [a]"},
      {{"--kind", "", "a"}, "kind= [a]"},
      {{"--kind=--check"}, "kind=--check "},
      {{"--kind", "-"}, "kind=- "},
      {{"-", "", "a b", "[a,b]", "c=d", "+", "\xff", "a\nb"},
       "[-][][a b][[a,b]][c=d][+][\xff][a\nb]"},
      {{"a", "--", "--check", "--", "-x"}, "[a][--check][--][-x]"},
      {{"--help", "--unknown"}, "help= "},
      {{"a", "-h", "--unknown"}, "help= [a]"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(parsed(row.arguments), row.parsed) << testing::PrintToString(row.arguments);
  }
}

TEST(Arguments, thatAreWrongRaiseAMessageOfOneLine) {
  const struct {
    Words arguments;
    std::string message;
  } rows[] = {
      {{"--unknown", "a"}, "unknown option: --unknown"},
      {{"--unknown=x", "a"}, "unknown option: --unknown=x"},
      {{"a", "-x"}, "unknown option: -x"},
      {{"-check"}, "unknown option: -check; did you mean --check?"},
      {{"-hx"}, "unknown option: -hx"},
      {{"-xh"}, "unknown option: -xh"},
      {{"-W", "check"}, "unknown option: -W"},
      {{"--chec"}, "unknown option: --chec; did you mean --check?"},
      {{"--Check"}, "unknown option: --Check; did you mean --check?"},
      {{"--knid=x"}, "unknown option: --knid=x; did you mean --kind?"},
      {{"--=x"}, "unknown option: --=x"},
      {{"--un\nknown\x1b\x7f"}, "unknown option: --un\\nknown\\u{1b}\\u{7f}"},
      {{"--unknown", "--help"}, "unknown option: --unknown"},
      {{"--check=false"}, "--check takes no value"},
      {{"--check="}, "--check takes no value"},
      {{"--help=x"}, "--help takes no value"},
      {{"--kind"}, "--kind without a value"},
      {{"--kind", "--check", "a"}, "--kind without a value"},
      {{"--kind", "--", "a"}, "--kind without a value"},
      {{"--kind", "x", "--kind=y"}, "--kind is given twice"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(parsed(row.arguments), row.message) << testing::PrintToString(row.arguments);
  }
}

TEST(Arguments, areReadWithoutTheEnvironment) {
  ASSERT_EQ(::setenv("POSIXLY_CORRECT", "1", 1), 0);
  EXPECT_EQ(parsed({"a", "--check"}), "check= [a]");
  ASSERT_EQ(::unsetenv("POSIXLY_CORRECT"), 0);
}

TEST(ArgumentValues, areThoseOfTheGivenOptions) {
  const CommandArguments arguments = parseArguments({"--kind=x", "--check"}, known);
  EXPECT_EQ(arguments.valueOf("kind"), "x");
  EXPECT_EQ(arguments.valueOf("check"), "");
  EXPECT_EQ(arguments.valueOf("help"), std::nullopt);
  EXPECT_TRUE(arguments.has("check"));
  EXPECT_FALSE(arguments.has("help"));
}

TEST(UsageErrors, areEscaped) {
  EXPECT_STREQ(UsageError("a\nb\x1b[31m\u202e\xff").what(), "a\\nb\\u{1b}[31m\\u{202e}\\xff");
  EXPECT_STREQ(UsageError("日本 'x'").what(), "日本 'x'");
}

}  // namespace
}  // namespace velmora
