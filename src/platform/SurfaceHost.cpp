// Keeps the meta objects of the abstract Q_OBJECT classes in this library.
#include "platform/Desktop.h"
#include "platform/SurfaceHost.h"
