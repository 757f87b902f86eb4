#include "platform/window_queue.h"

#include <glib.h>

#include "platform/job_list.h"

namespace platform {

// A GLib event source in the default context, which every loop of the toolkit runs, nested ones
// too.
class WindowQueue::System {
 public:
  System() {
    source_ = reinterpret_cast<Source*>(g_source_new(&functions_, sizeof(Source)));
    source_->system = this;
    // A job may open a dialog, whose nested loop must find this source ready again.
    g_source_set_can_recurse(&source_->base, TRUE);
    g_source_attach(&source_->base, nullptr);
  }
  ~System() {
    g_source_destroy(&source_->base);
    g_source_unref(&source_->base);
  }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  void Post(std::unique_ptr<Job> job) {
    if (jobs_.Add(std::move(job))) Wake();
  }

 private:
  struct Source {
    GSource base;
    System* system;
  };

  static constexpr int kJobsPerPass = 64;

  void Wake() { g_source_set_ready_time(&source_->base, 0); }

  static gboolean Dispatch(GSource* base, GSourceFunc, gpointer) {
    System* system = reinterpret_cast<Source*>(base)->system;
    // Reset before the jobs run, so that a job added to the emptied list makes the source ready
    // again.
    g_source_set_ready_time(base, -1);
    if (system->jobs_.HasSeveral()) system->Wake();
    if (system->jobs_.Drain(kJobsPerPass)) system->Wake();
    return G_SOURCE_CONTINUE;
  }

  static GSourceFuncs functions_;

  JobList jobs_;
  Source* source_;
};

GSourceFuncs WindowQueue::System::functions_ = {nullptr, nullptr, Dispatch,
                                                nullptr, nullptr, nullptr};

WindowQueue::WindowQueue() : system_(std::make_unique<System>()) {}
WindowQueue::~WindowQueue() = default;
void WindowQueue::Post(std::unique_ptr<Job> job) { system_->Post(std::move(job)); }

}  // namespace platform
