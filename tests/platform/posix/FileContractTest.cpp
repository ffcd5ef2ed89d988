#include "platform/posix/PosixFileReader.h"
#include "platform/posix/PosixFileWriter.h"
#include "tests/contracts/FileContract.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/support/ScratchDirectory.h"

namespace velmora {
namespace {

class PosixFiles {
 public:
  const FileReader& reader() { return reader_; }
  FileWriter& writer() { return writer_; }
  std::string path(std::string_view name) const { return directory_.path(name); }

 private:
  ScratchDirectory directory_;
  PosixFileReader reader_;
  PosixFileWriter writer_;
};

class FakeFiles {
 public:
  const FileReader& reader() { return fileSystem_; }
  FileWriter& writer() { return fileSystem_; }
  static std::string path(std::string_view name) { return "/" + std::string(name); }

 private:
  Journal journal_;
  FakeFileSystem fileSystem_{journal_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, FileContract, PosixFiles);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, FileContract, FakeFiles);

}  // namespace
}  // namespace velmora
