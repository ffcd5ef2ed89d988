#include "platform/macos/MacSharedLocations.h"
#include "tests/contracts/SharedLocationsContract.h"
#include "tests/gnustep/SharedObjects.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

class MacLocationsAdapter {
 public:
  const SharedLocations& locations() { return locations_; }

  static std::string joinGroup(std::string_view group) {
    return sharedObjects().groupContainers[std::string(group)] =
               "/Users/zo\u00eb/Library/Group Containers/" + std::string(group);
  }

  static std::vector<std::string> provideSupportDirectories() {
    return sharedObjects().applicationSupportDirectories = {"/Users/me/Library/100% Support",
                                                            "/Users/me/Library/復元"};
  }

 private:
  MacSharedLocations locations_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, SharedLocationsContract, MacLocationsAdapter);

}  // namespace
}  // namespace velmora
