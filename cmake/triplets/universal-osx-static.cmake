# Third-party libraries for the Finder extensions, by vcpkg: for both processors, and static, since
# the sandbox lets an extension load no library of Homebrew's or of another folder.
set(VCPKG_TARGET_ARCHITECTURE arm64)
set(VCPKG_CRT_LINKAGE dynamic)
set(VCPKG_LIBRARY_LINKAGE static)
# With Xcode, which chooses the kind of a build late, debug libraries would be found first.
set(VCPKG_BUILD_TYPE release)
set(VCPKG_CMAKE_SYSTEM_NAME Darwin)
set(VCPKG_OSX_ARCHITECTURES "arm64;x86_64")
# The same as in the project's CMakeLists.txt: the linker warns of objects for a later system.
set(VCPKG_OSX_DEPLOYMENT_TARGET 11.0)
