#include "platform/posix/SystemClock.h"
#include "tests/contracts/ClockContract.h"

namespace velmora {
namespace {

class SystemClockAdapter {
 public:
  const Clock& clock() const { return clock_; }
  static std::chrono::system_clock::time_point time() { return std::chrono::system_clock::now(); }

 private:
  SystemClock clock_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(System, ClockContract, SystemClockAdapter);

}  // namespace
}  // namespace velmora
