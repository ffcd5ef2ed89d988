#include "platform/linux/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace velmora {
namespace {

TEST(Environment, distinguishesEmptyFromUnsetAndAbsoluteFromRelative) {
  const Environment environment({{"ABSOLUTE", "/a"}, {"RELATIVE", "a/b=c"}, {"EMPTY", ""}});
  EXPECT_EQ(environment.variable("EMPTY"), "");
  EXPECT_EQ(environment.variable("RELATIVE"), "a/b=c");
  EXPECT_EQ(environment.variable("UNSET"), std::nullopt);
  EXPECT_EQ(environment.variable("RELATIV"), std::nullopt);
  EXPECT_EQ(environment.absolutePath("ABSOLUTE"), "/a");
  EXPECT_EQ(environment.absolutePath("RELATIVE"), std::nullopt);
  EXPECT_EQ(environment.absolutePath("EMPTY"), std::nullopt);
  EXPECT_EQ(environment.absolutePath("UNSET"), std::nullopt);
}

/// Restores the environment afterwards.
class EnvironmentOfProcess : public testing::Test {
 protected:
  void set(const std::string& name, const std::string& value) {
    if (!before_) {
      before_ = captureEnvironment();
    }
    setenv(name.c_str(), value.c_str(), 1);
    changed_.push_back(name);
  }
  ~EnvironmentOfProcess() override {
    for (const std::string& name : changed_) {
      const auto value = before_->variable(name);
      value ? setenv(name.c_str(), std::string(*value).c_str(), 1) : unsetenv(name.c_str());
    }
  }

 private:
  std::optional<Environment> before_;
  std::vector<std::string> changed_;
};

TEST_F(EnvironmentOfProcess, doesNotChangeAfterCapture) {
  set("VELMORA_TEST_VARIABLE", "before=1");
  const Environment environment = captureEnvironment();
  set("VELMORA_TEST_VARIABLE", "after");
  EXPECT_EQ(environment.variable("VELMORA_TEST_VARIABLE"), "before=1");
}

}  // namespace
}  // namespace velmora
