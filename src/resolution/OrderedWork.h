// Work in numbered pieces: done side by side where that pays, handed over in order.
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <thread>

namespace velmora {

/// Does one piece after the other, each told by its number. For one thread at a time.
using PieceWorker = std::function<void(std::size_t piece)>;

struct OrderedWork {
  /// The pieces are 0 and so on; they are begun in this order.
  std::size_t pieceCount = 0;
  /// Makes the worker of the thread that calls it. One that throws on a helper's thread sends only
  /// the helper home.
  std::function<PieceWorker()> makeWorker;
  /// How many helpers are worth their start for the `remaining` pieces that nobody has begun. Asked
  /// on the calling thread after each piece, until the answer is not 0.
  std::function<std::size_t(std::size_t remaining)> helpersWorthStarting;
  /// A piece is done, or has thrown `fault`. Called on the calling thread, once for each piece in
  /// their order, as soon as that thread has finished a piece of its own or has none left to begin.
  std::function<void(std::size_t piece, const std::exception_ptr& fault)> didFinish;
};

/// Starts a thread. Throws std::system_error when the system has none to give.
using ThreadStarter = std::function<std::thread(std::function<void()> body)>;

/// The standard library's way.
[[nodiscard]] std::thread startThread(std::function<void()> body);

/// Does all pieces, on the calling thread and on those of helpers, and returns when all are handed
/// over. No helper is started for a piece that the calling thread could take at once, so there are
/// fewer than pieces remain. When a thread cannot be started, those there are do the work.
///
/// What `didFinish` throws, or `makeWorker` on the calling thread, passes through: no further piece
/// is begun then, and every helper has ended before this returns. Throws std::bad_alloc when there
/// is no memory to keep account of the pieces.
void performInOrder(const OrderedWork& work, const ThreadStarter& start = startThread);

}  // namespace velmora
