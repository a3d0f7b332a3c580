// Brings the utility library into a process that does not link it, and
// starts its watchdog with a watched lock that is still alive when the
// plugin, and with it the utility library, is unloaded.

#include <vxutility/VXMutex.h>

namespace {

VXReinforceMutex* g_watched = nullptr;

/// Destroys the lock when the plugin goes, before the utility library does.
struct PluginLifetime {
  ~PluginLifetime() { delete g_watched; }
} g_lifetime;

}  // namespace

extern "C" __attribute__((visibility("default"))) void vxtest_start_watching() {
  if (g_watched == nullptr) g_watched = new VXReinforceMutex("plugin", 30);
  g_watched->Lock();
  g_watched->Unlock();
}
