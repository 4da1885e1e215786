// The session bus, absent until it has answered. One that accepts connections and never answers holds up
// whoever connects to it, the toolkit as well; so it is spoken to before anybody connects. Main thread.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>

namespace marrowfin::dbus {

// Before QApplication is made: waits for the bus's first word. A bus that stays silent is kept from the
// toolkit.
void meetSessionBus();
// After QApplication is made: the processes that we start find the bus as we found it, and what it says late
// is heard.
void listenToSessionBus();

// Not connected while the bus is absent.
QDBusConnection sessionBus();
// Now if the bus is there, otherwise once it has answered, if the context is still there. Never without a
// bus.
void whenBusAnswers(QObject& context, std::function<void()> block);

} // namespace marrowfin::dbus
