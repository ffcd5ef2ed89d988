#include "platform/posix/RandomIdentifierSource.h"
#include "tests/contracts/IdentifierSourceContract.h"

namespace velmora {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Random, IdentifierSourceContract, RandomIdentifierSource);

}  // namespace
}  // namespace velmora
