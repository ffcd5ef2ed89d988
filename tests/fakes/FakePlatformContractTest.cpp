// The fakes keep the same promises as what they stand for.

#include "tests/contracts/ClockContract.h"
#include "tests/contracts/ExtensionBundleContract.h"
#include "tests/contracts/ExtensionHostContract.h"
#include "tests/contracts/IdentifierSourceContract.h"
#include "tests/contracts/LoggerContract.h"
#include "tests/contracts/MainQueueContract.h"
#include "tests/contracts/NotificationCenterContract.h"
#include "tests/contracts/PreferredLanguagesContract.h"
#include "tests/contracts/SharedDefaultsContract.h"
#include "tests/contracts/SharedLocationsContract.h"
#include "tests/contracts/WorkspaceContract.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

class BundleAdapter {
 public:
  const ExtensionBundle& bundle() const { return bundle_; }
  void identifyAs(const std::optional<std::string>& identifier) {
    bundle_.identifier = identifier.has_value() ? std::optional<Text>(*identifier) : std::nullopt;
  }
  void localize(std::string_view language, const std::map<std::string, std::string>& texts) {
    bundle_.tables[std::string(language)].insert(texts.begin(), texts.end());
  }
  void localizeUnusably(std::string_view language) {
    bundle_.tables[std::string(language)].clear();
  }

 private:
  FakeExtensionBundle bundle_;
};

class LoggerUnderTest {
 public:
  Logger& logger() { return logger_; }
  std::vector<std::string> lines() { return logger_.lines; }

 private:
  FakeLogger logger_;
};

class QueueAdapter {
 public:
  MainQueue& queue() { return queue_; }
  void runPending() { queue_.runAll(); }

 private:
  FakeMainQueue queue_;
};

class CenterAdapter {
 public:
  NotificationCenter& center() { return center_; }
  std::vector<std::string> received(std::size_t) { return center_.posted; }
  /// Nothing the fake could lose.
  void breakDelivery() {}

 private:
  Journal journal_;
  FakeNotificationCenter center_{journal_};
};

class LanguagesAdapter {
 public:
  const PreferredLanguages& languages() const { return languages_; }
  void prefer(const std::vector<std::string>& tags) {
    languages_.tags.assign(tags.begin(), tags.end());
  }

 private:
  FakePreferredLanguages languages_;
};

class DefaultsAdapter {
 public:
  const SharedDefaults& defaults() const { return defaults_; }
  void store(std::string_view suite, std::string_view key, std::string_view value) {
    defaults_.values[{std::string(suite), std::string(key)}] = value;
  }
  void makeUnusable(std::string_view suite) {
    std::erase_if(defaults_.values,
                  [&](const auto& stored) { return stored.first.first == suite; });
  }

 private:
  FakeSharedDefaults defaults_;
};

class LocationsAdapter {
 public:
  const SharedLocations& locations() const { return locations_; }
  std::string joinGroup(std::string_view group) {
    const std::string path = "/groups/" + std::string(group);
    locations_.groupContainers[std::string(group)] = path;
    return path;
  }
  std::vector<std::string> provideSupportDirectories() {
    locations_.supportDirectories = {"/support/first", "/support/second"};
    return {"/support/first", "/support/second"};
  }

 private:
  FakeSharedLocations locations_;
};

class WorkspaceUnderTest {
 public:
  WorkspaceUnderTest() {
    workspace_.installedApplications = {{installedApplication(), "/one"},
                                        {otherInstalledApplication(), "/other"}};
  }

  Workspace& workspace() { return workspace_; }
  static std::string installedApplication() { return "org.example.One"; }
  static std::string otherInstalledApplication() { return "org.example.Other"; }
  static Text emptyLocation() { return "/nothing"; }
  std::vector<std::string> opened(std::size_t) {
    std::vector<std::string> identifiers;
    for (const auto& [location, configuration] : workspace_.opened) {
      for (const auto& [identifier, installed] : workspace_.installedApplications) {
        if (installed == location) {
          identifiers.push_back(identifier);
        }
      }
    }
    return identifiers;
  }

 private:
  Journal journal_;
  FakeWorkspace workspace_{journal_};
};

class ClockAdapter {
 public:
  const Clock& clock() const { return clock_; }
  std::chrono::system_clock::time_point time() const { return clock_.time; }

 private:
  FakeClock clock_;
};

class HostAdapter {
 public:
  ExtensionContext& context() { return *context_; }
  int endCount() const { return context_->ends->count(); }
  std::optional<RequestError> error() const {
    const std::vector<RequestError>& errors = context_->ends->errors;
    return errors.empty() ? std::nullopt : std::optional(errors.front());
  }

 private:
  std::shared_ptr<FakeExtensionContext> context_ =
      contextWith({answeringPath("/a"), answeringPath("/b")});
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ClockContract, ClockAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ExtensionHostContract, HostAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, IdentifierSourceContract, FakeIdentifierSource);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ExtensionBundleContract, BundleAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, LoggerContract, LoggerUnderTest);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, MainQueueContract, QueueAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, NotificationCenterContract, CenterAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, PreferredLanguagesContract, LanguagesAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SharedDefaultsContract, DefaultsAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SharedLocationsContract, LocationsAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, WorkspaceContract, WorkspaceUnderTest);

}  // namespace
}  // namespace velmora
