// Runs a fuzz target on each file of the folder that is its argument. It prints the name of a file
// before the run, because a violated property ends the process.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argumentCount, char* arguments[]) {
  if (argumentCount != 2) {
    std::cerr << "usage: " << arguments[0] << " FOLDER\n";
    return EXIT_FAILURE;
  }
  int count = 0;
  for (const auto& seed : std::filesystem::directory_iterator(arguments[1])) {
    std::cout << seed.path().filename() << std::endl;
    std::ifstream file(seed.path(), std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    if (!file.is_open() || file.bad() || LLVMFuzzerTestOneInput(data, bytes.size()) != 0) {
      return EXIT_FAILURE;
    }
    ++count;
  }
  std::cout << count << " seeds\n";
  return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
