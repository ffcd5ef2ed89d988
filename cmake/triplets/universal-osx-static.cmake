# Third-party libraries for the Finder extensions, built by vcpkg for both processors. They are
# static, because the sandbox does not let an extension load libraries from other folders, such as
# Homebrew's.
set(VCPKG_TARGET_ARCHITECTURE arm64)
set(VCPKG_CRT_LINKAGE dynamic)
set(VCPKG_LIBRARY_LINKAGE static)
# Xcode chooses the build type late, so CMake would find the debug libraries first.
set(VCPKG_BUILD_TYPE release)
set(VCPKG_CMAKE_SYSTEM_NAME Darwin)
set(VCPKG_OSX_ARCHITECTURES "arm64;x86_64")
# The same as in the project's CMakeLists.txt, because the linker warns of objects for a later
# system.
set(VCPKG_OSX_DEPLOYMENT_TARGET 11.0)
