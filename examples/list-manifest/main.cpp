// list-manifest FILE prints the entries of a manifest, or the fault of an invalid file.
#include "json/DecodingError.h"
#include "platform/PlatformError.h"
#include "platform/posix/PosixFileReader.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <iostream>
#include <variant>

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::cerr << "usage: list-manifest FILE\n";
    return 2;
  }
  const velmora::PosixFileReader files;
  velmora::ManifestDecoder decoder;
  try {
    const velmora::VelmoraWarpSharedManifest manifest = decoder.read(arguments[1], files);
    std::cout << manifest.originalFolderPath.view() << "\n";
    for (const auto& entry : manifest.entries) {
      std::cout << rawValue(entry.kind) << " " << entry.size << " " << entry.relativePath.view()
                << "\n";
    }
    return 0;
  } catch (const velmora::DecodingError& error) {
    // The coding path of the fault: the keys of objects, and the indexes of arrays.
    for (const velmora::CodingKey& step : error.codingPath()) {
      std::cerr << "/";
      std::visit([](const auto& keyOrIndex) { std::cerr << keyOrIndex; }, step);
    }
    std::cerr << ": " << name(error.kind()) << ": " << error.what() << "\n";
  } catch (const velmora::PlatformError& error) {
    std::cerr << arguments[1] << ": " << error.what() << "\n";
  }
  return 1;
}
