// The fakes keep the contracts of their interfaces.

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

#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

struct BundleAdapter {
  FakeExtensionBundle fake;

  const ExtensionBundle& bundle() const { return fake; }
  void identifyAs(const std::string& identifier) { fake.identifier = identifier; }
  void localize(const std::string& language, const FakeExtensionBundle::Table& texts) {
    fake.tables[language] = texts;
  }
  void localizeUnusably(const std::string& language) { fake.tables[language].clear(); }
};

struct LoggerAdapter {
  Journal journal;
  FakeLogger fake{journal};

  Logger& logger() { return fake; }
  std::vector<std::string> lines() { return fake.lines; }
};

struct QueueAdapter {
  FakeMainQueue fake;

  MainQueue& queue() { return fake; }
  void runPending() { fake.runAll(); }
};

struct CenterAdapter {
  Journal journal;
  FakeNotificationCenter fake{journal};

  NotificationCenter& center() { return fake; }
  std::vector<std::string> received(std::size_t) { return fake.posted; }
  /// The fake has no delivery that could fail.
  void breakDelivery() {}
};

struct LanguagesAdapter {
  FakePreferredLanguages fake;

  const PreferredLanguages& languages() const { return fake; }
  void prefer(const std::vector<std::string>& tags) { fake.tags.assign(tags.begin(), tags.end()); }
};

struct DefaultsAdapter {
  FakeSharedDefaults fake;

  const SharedDefaults& defaults() const { return fake; }
  void store(const std::string& suite, const std::string& key, const std::string& value) {
    fake.values[{suite, key}] = value;
  }
  void makeUnusable(std::string_view suite) {
    std::erase_if(fake.values, [&](const auto& stored) { return stored.first.first == suite; });
  }
};

struct LocationsAdapter {
  FakeSharedLocations fake;

  const SharedLocations& locations() const { return fake; }
  std::string joinGroup(const std::string& group) {
    fake.groupContainers[group] = "/groups/" + group;
    return "/groups/" + group;
  }
  std::vector<std::string> provideSupportDirectories() {
    fake.supportDirectories = {"/support/first", "/support/second"};
    return {"/support/first", "/support/second"};
  }
};

struct WorkspaceAdapter {
  Journal journal;
  FakeWorkspace fake{journal};

  WorkspaceAdapter() { fake.installedApplications = {{"/one", "/one"}, {"/other", "/other"}}; }

  Workspace& workspace() { return fake; }
  static std::string installedApplication() { return "/one"; }
  static std::string otherInstalledApplication() { return "/other"; }
  static Text emptyLocation() { return "/nothing"; }
  std::vector<std::string> opened(std::size_t) {
    std::vector<std::string> identifiers;
    for (const auto& [location, configuration] : fake.opened) {
      if (fake.installedApplications.contains(location.utf8())) {
        identifiers.push_back(location.utf8());
      }
    }
    return identifiers;
  }
};

struct ClockAdapter {
  FakeClock fake;

  const Clock& clock() const { return fake; }
  std::chrono::system_clock::time_point time() const { return fake.time; }
};

struct HostAdapter {
  std::shared_ptr<FakeExtensionContext> fake =
      contextWith({answeringPath("/a"), answeringPath("/b")});

  ExtensionContext& context() { return *fake; }
  int endCount() const { return fake->ends->count(); }
  std::optional<RequestError> error() const {
    const std::vector<RequestError>& errors = fake->ends->errors;
    return errors.empty() ? std::nullopt : std::optional(errors.front());
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ClockContract, ClockAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ExtensionHostContract, HostAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, IdentifierSourceContract, FakeIdentifierSource);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ExtensionBundleContract, BundleAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, LoggerContract, LoggerAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, MainQueueContract, QueueAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, NotificationCenterContract, CenterAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, PreferredLanguagesContract, LanguagesAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SharedDefaultsContract, DefaultsAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SharedLocationsContract, LocationsAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, WorkspaceContract, WorkspaceAdapter);

}  // namespace
}  // namespace velmora
