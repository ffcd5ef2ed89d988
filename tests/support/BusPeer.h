// Another program on the bus, which receives signals and calls. Both arrive on a thread of GIO's.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

/// A signal or a call that has arrived.
struct BusMessage {
  bool isCall = false;
  std::string sender;
  std::string path;
  std::string interface;
  std::string member;
  /// In the text format of GVariant, with types.
  std::string arguments;
  /// The content of the watched directory at that time: names and contents in turn.
  std::vector<std::string> files;
};

class BusPeer {
 public:
  /// Throws std::runtime_error when there is no bus.
  explicit BusPeer(const std::string& address);
  BusPeer(const BusPeer&) = delete;
  BusPeer& operator=(const BusPeer&) = delete;
  /// Waits until everything has been sent.
  ~BusPeer();

  /// Receives every later signal of `interface`.
  void listen(const std::string& interface);

  /// Receives every later change of owner of a name that begins with `namesBeginning`.
  void listenForOwners(const std::string& namesBeginning);

  /// Answers calls with `answer`, a tuple in the text format of GVariant, instead of "()". An empty
  /// `answer` means that it never answers.
  void answerWith(const std::string& answer);

  /// Records the content of `directory` with every later message.
  void watch(const std::string& directory);

  /// Becomes the owner of `name`.
  void own(const std::string& name);

  /// The unique name of the connection that owns `name`; empty when nobody owns it.
  std::string ownerOf(const std::string& name);

  /// Sends a signal without arguments from its unique name.
  void emitSignal(const std::string& path, const std::string& interface, const std::string& member);

  /// Waits until `count` signals and calls have arrived since the start. Returns all that have
  /// arrived, in order.
  std::vector<BusMessage> received(std::size_t count);

  /// Waits until `process` has left the bus, so that no further message of it can arrive. Returns
  /// all messages since the start.
  std::vector<BusMessage> receivedUntilGone(pid_t process);

 private:
  struct State;

  std::unique_ptr<State> state_;
};

}  // namespace velmora
