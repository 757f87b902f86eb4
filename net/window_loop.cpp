#include "net/window_loop.h"

#include <asio/execution.hpp>
#include <memory>
#include <utility>

namespace net {
namespace {

// Wraps any movable function as a job of the queue.
template <class Function>
class FunctionJob : public platform::WindowQueue::Job {
 public:
  FunctionJob(std::unique_ptr<EventLoop>& loop, Function function)
      : loop_(loop), function_(std::move(function)) {}
  void Run() override {
    loop_->Guard([this] { std::move(function_)(); });
  }

 private:
  std::unique_ptr<EventLoop>& loop_;
  Function function_;
};

// Makes sockets and timers of the I/O context complete on the window thread.
class WindowExecutor {
 public:
  // `loop` is created with this executor, before the first job runs.
  WindowExecutor(asio::io_context& context, platform::WindowQueue& queue,
                 std::unique_ptr<EventLoop>& loop)
      : context_(&context), queue_(&queue), loop_(&loop) {}

  asio::execution_context& query(asio::execution::context_t) const noexcept { return *context_; }
  static constexpr asio::execution::blocking_t query(asio::execution::blocking_t) noexcept {
    return asio::execution::blocking.never;
  }

  template <class Function>
  void execute(Function function) const {
    queue_->Post(std::make_unique<FunctionJob<Function>>(*loop_, std::move(function)));
  }

  bool operator==(const WindowExecutor& other) const noexcept = default;

 private:
  asio::io_context* context_;
  platform::WindowQueue* queue_;
  std::unique_ptr<EventLoop>* loop_;
};

}  // namespace

WindowLoop::WindowLoop() : work_(context_.get_executor()) {
  events_ = std::make_unique<EventLoop>(WindowExecutor(context_, queue_, events_));
  waiter_ = std::thread([this] { context_.run(); });
}

WindowLoop::~WindowLoop() {
  work_.reset();
  context_.stop();
  waiter_.join();
}

}  // namespace net
