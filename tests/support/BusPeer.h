// Another program on the bus, as far as a test needs one: it hears signals and takes calls.
//
// Both are taken as they come, on a thread of GIO's.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

/// A signal or a call, as it arrived.
struct BusMessage {
  bool isCall = false;
  std::string sender;
  std::string path;
  std::string interface;
  std::string member;
  /// In the text format of GVariant, with types.
  std::string arguments;
  /// What lay in the watched directory: names and contents, by turns.
  std::vector<std::string> files;
};

class BusPeer {
 public:
  /// Throws std::runtime_error when there is no bus.
  explicit BusPeer(const std::string& address);
  BusPeer(const BusPeer&) = delete;
  BusPeer& operator=(const BusPeer&) = delete;
  /// Waits until all that it has to say has left.
  ~BusPeer();

  /// Hears every signal of `interface` from here on.
  void listen(const std::string& interface);

  /// Hears of every name of that beginning which gets another owner.
  void listenForOwners(const std::string& namesBeginning);

  /// Answers calls with `answer`, a tuple in the text format of GVariant, instead of "()"; when
  /// that is empty, never.
  void answerWith(const std::string& answer);

  /// Looks from here on into `directory` whenever a message comes.
  void watch(const std::string& directory);

  /// Becomes the owner of `name`.
  void own(const std::string& name);

  /// The unique name of the connection that owns `name`; empty when there is none.
  std::string ownerOf(const std::string& name);

  /// Sends the bus a signal without arguments, under no name.
  void emitSignal(const std::string& path, const std::string& interface, const std::string& member);

  /// Waits until `count` signals and calls have come since the beginning. Returns all that came,
  /// in order.
  std::vector<BusMessage> received(std::size_t count);

  /// Waits until `process` has left the bus, so that nothing that it has sent can follow. Returns
  /// all that has come since the beginning.
  std::vector<BusMessage> receivedUntilGone(pid_t process);

 private:
  struct State;

  std::unique_ptr<State> state_;
};

}  // namespace velmora
