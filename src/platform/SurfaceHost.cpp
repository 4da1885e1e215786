// Keeps the meta objects of the abstract Q_OBJECT classes in this library.
#include "platform/SurfaceHost.h"
#include "platform/Desktop.h"
