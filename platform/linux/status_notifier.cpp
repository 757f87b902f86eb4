#include "platform/status_notifier.h"

#include <gio/gio.h>
#include <libayatana-appindicator/app-indicator.h>

#include <cstdlib>
#include <utility>

namespace platform {
namespace {

// Without a session bus the library would start one that nothing ever ends.
bool HasSessionBus() {
  if (std::getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr) return true;
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  std::error_code error;
  return runtime != nullptr &&
         std::filesystem::exists(std::filesystem::path(runtime) / "bus", error);
}

bool HasOwner(GDBusConnection* bus, const char* name) {
  GVariant* answer = g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
      g_variant_new("(s)", name), G_VARIANT_TYPE("(b)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
      nullptr);
  if (answer == nullptr) return false;
  gboolean owned = FALSE;
  g_variant_get(answer, "(b)", &owned);
  g_variant_unref(answer);
  return owned != FALSE;
}

// The session bus; null without one. Never released: the library shares this connection, which
// would otherwise be closed and reopened.
GDBusConnection* SessionBus() {
  static GDBusConnection* const bus =
      HasSessionBus() ? g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr) : nullptr;
  return bus;
}

constexpr const char* kTray = "org.kde.StatusNotifierWatcher";
constexpr guint kPatience = 3;  // seconds in which a desktop restarts its tray

}  // namespace

class StatusNotifier::System {
 public:
  System(const std::string& iconName, const std::filesystem::path& iconFolder,
         const std::string& title, std::function<void()> onLost)
      : onLost_(std::move(onLost)),
        watch_(g_bus_watch_name_on_connection(SessionBus(), kTray, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                              nullptr, OnVanished, this, nullptr)),
        // By its properties: newer versions of the library warn of its constructors.
        indicator_(static_cast<AppIndicator*>(g_object_new(
            APP_INDICATOR_TYPE, "id", "tarnwerk", "category", "ApplicationStatus", "icon-name",
            iconName.c_str(), "icon-theme-path", iconFolder.c_str(), nullptr))) {
    app_indicator_set_title(indicator_, title.c_str());
  }
  ~System() {
    g_bus_unwatch_name(watch_);
    if (timer_ != 0) g_source_remove(timer_);
    g_object_unref(indicator_);
  }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  void SetMenu(void* menu) { app_indicator_set_menu(indicator_, static_cast<GtkMenu*>(menu)); }
  void SetIcon(const std::string& name) {
    app_indicator_set_icon_full(indicator_, name.c_str(), nullptr);
  }
  void SetStatus(AppIndicatorStatus status) { app_indicator_set_status(indicator_, status); }

 private:
  static void OnVanished(GDBusConnection*, const char*, gpointer self) {
    auto& system = *static_cast<System*>(self);
    if (system.timer_ == 0) system.timer_ = g_timeout_add_seconds(kPatience, OnPatienceEnd, self);
  }

  static gboolean OnPatienceEnd(gpointer self) {
    auto& system = *static_cast<System*>(self);
    system.timer_ = 0;
    if (!IsAvailable()) system.onLost_();
    return G_SOURCE_REMOVE;
  }

  std::function<void()> onLost_;
  guint watch_;
  guint timer_ = 0;
  AppIndicator* indicator_;
};

bool StatusNotifier::IsAvailable() {
  GDBusConnection* const bus = SessionBus();
  return bus != nullptr && HasOwner(bus, kTray);
}

StatusNotifier::StatusNotifier(const std::string& iconName, const std::filesystem::path& iconFolder,
                               const std::string& title, std::function<void()> onLost)
    : system_(std::make_unique<System>(iconName, iconFolder, title, std::move(onLost))) {}

StatusNotifier::~StatusNotifier() = default;

void StatusNotifier::SetMenu(void* menu) { system_->SetMenu(menu); }
void StatusNotifier::SetIcon(const std::string& iconName) { system_->SetIcon(iconName); }
void StatusNotifier::Show() { system_->SetStatus(APP_INDICATOR_STATUS_ACTIVE); }
void StatusNotifier::Hide() { system_->SetStatus(APP_INDICATOR_STATUS_PASSIVE); }

}  // namespace platform
