#include "resolution/OrderedWork.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace velmora {

namespace {

/// What the threads share. Every thread begins and finishes pieces; only the calling thread looks
/// at what is finished.
class Pieces {
 public:
  explicit Pieces(std::size_t count) : count_(count), states_(count) {}

  /// The next piece that nobody has begun.
  std::optional<std::size_t> begin() {
    const std::size_t piece = next_.fetch_add(1);
    return piece < count_ ? std::optional(piece) : std::nullopt;
  }

  [[nodiscard]] std::size_t remaining() const { return count_ - std::min(count_, next_.load()); }

  /// Lets nobody begin another piece.
  void withdrawRemaining() { next_ = count_; }

  void finish(std::size_t piece, std::exception_ptr fault) {
    {
      const std::lock_guard guard(mutex_);
      states_[piece] = {.isFinished = true, .fault = std::move(fault)};
    }
    didFinish_.notify_one();
  }

  [[nodiscard]] bool isFinished(std::size_t piece) {
    const std::lock_guard guard(mutex_);
    return piece < count_ && states_[piece].isFinished;
  }

  /// Waits until the piece, which somebody has begun, is finished. Returns what it has thrown.
  std::exception_ptr faultOfFinished(std::size_t piece) {
    std::unique_lock lock(mutex_);
    didFinish_.wait(lock, [&] { return states_[piece].isFinished; });
    return std::move(states_[piece].fault);
  }

 private:
  struct State {
    bool isFinished = false;
    std::exception_ptr fault;
  };

  const std::size_t count_;
  std::atomic<std::size_t> next_ = 0;

  std::mutex mutex_;
  std::vector<State> states_;
  std::condition_variable didFinish_;
};

void perform(std::size_t piece, const PieceWorker& worker, Pieces& pieces) {
  std::exception_ptr fault;
  try {
    worker(piece);
  } catch (...) {
    // For the calling thread, which decides what it means.
    fault = std::current_exception();
  }
  pieces.finish(piece, std::move(fault));
}

std::optional<PieceWorker> workerOfHelper(const OrderedWork& work) {
  try {
    return work.makeWorker();
  } catch (...) {
    // A helper has begun no piece before it has a worker, so nobody misses it.
    return std::nullopt;
  }
}

/// Ends with its helpers: none outlives what it works on.
class Helpers {
 public:
  Helpers(const OrderedWork& work, Pieces& pieces) : work_(work), pieces_(pieces) {}
  Helpers(const Helpers&) = delete;
  Helpers& operator=(const Helpers&) = delete;
  ~Helpers() {
    pieces_.withdrawRemaining();
    for (std::thread& thread : threads_) {
      thread.join();
    }
  }

  void start(std::size_t count, const ThreadStarter& startThread) {
    try {
      threads_.reserve(count);
      while (threads_.size() < count) {
        threads_.push_back(startThread([this] { help(); }));
      }
    } catch (const std::exception&) {
      // Neither a thread nor the memory for one is needed: those there are do the work.
    }
  }

 private:
  void help() {
    const std::optional<PieceWorker> worker = workerOfHelper(work_);
    if (!worker.has_value()) {
      return;
    }
    while (const std::optional<std::size_t> piece = pieces_.begin()) {
      perform(*piece, *worker, pieces_);
    }
  }

  const OrderedWork& work_;
  Pieces& pieces_;
  std::vector<std::thread> threads_;
};

std::size_t helpersToStart(const OrderedWork& work, std::size_t remaining) {
  return remaining > 1 ? std::min(work.helpersWorthStarting(remaining), remaining - 1) : 0;
}

}  // namespace

std::thread startThread(std::function<void()> body) { return std::thread(std::move(body)); }

void performInOrder(const OrderedWork& work, const ThreadStarter& start) {
  Pieces pieces(work.pieceCount);
  const PieceWorker worker = work.makeWorker();
  Helpers helpers(work, pieces);
  bool isAlone = true;
  std::size_t next = 0;
  const auto handOver = [&] {
    work.didFinish(next, pieces.faultOfFinished(next));
    ++next;
  };
  while (const std::optional<std::size_t> piece = pieces.begin()) {
    perform(*piece, worker, pieces);
    while (pieces.isFinished(next)) {
      handOver();
    }
    if (!isAlone) {
      continue;
    }
    if (const std::size_t count = helpersToStart(work, pieces.remaining()); count > 0) {
      helpers.start(count, start);
      isAlone = false;
    }
  }
  while (next < work.pieceCount) {
    handOver();
  }
}

}  // namespace velmora
