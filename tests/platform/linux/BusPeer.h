// Another program on the bus, as far as a test needs one: it hears signals and takes calls.
//
// Everything happens while one of its functions runs, on the thread that calls them.
#pragma once

#include "platform/linux/GLibPointers.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

/// A signal or a call, as it arrived.
struct BusMessage {
  std::string sender;
  std::string path;
  std::string interface;
  std::string member;
  /// In the text format of GVariant, with types.
  std::string arguments;

  bool operator==(const BusMessage&) const = default;
};

class BusPeer {
 public:
  explicit BusPeer(const std::string& address);
  BusPeer(const BusPeer&) = delete;
  BusPeer& operator=(const BusPeer&) = delete;
  ~BusPeer();

  /// Hears every signal of `interface` from here on.
  void listen(const std::string& interface);

  /// Takes the calls of the methods that `interfaceXml` describes, answering each with `answer`, a
  /// tuple in the text format of GVariant.
  void serve(const std::string& path, const std::string& interfaceXml, const std::string& answer);

  /// Becomes the owner of `name`.
  void own(const std::string& name);

  /// The unique name of the connection that owns `name`; empty when there is none.
  std::string ownerOf(const std::string& name);

  /// Sends the bus a signal without arguments, under no name.
  void emitSignal(const std::string& path, const std::string& interface, const std::string& member);

  /// Waits until `count` signals and calls have come since the beginning. Returns all that came,
  /// in order.
  const std::vector<BusMessage>& received(std::size_t count);

  /// Waits until all answers have left.
  void flush();

 private:
  struct Service;

  GLibPointer<GVariant> callBus(const char* member, GVariant* arguments);

  GLibPointer<GMainContext> context_;
  GObjectRef<GDBusConnection> connection_;
  std::vector<std::unique_ptr<Service>> services_;
  std::vector<BusMessage> received_;
};

/// What is known of org.freedesktop.Application here, for BusPeer::serve.
inline constexpr const char* applicationInterfaceXml =
    "<node><interface name='org.freedesktop.Application'>"
    "<method name='Activate'><arg type='a{sv}' name='platform_data' direction='in'/></method>"
    "</interface></node>";

}  // namespace velmora
