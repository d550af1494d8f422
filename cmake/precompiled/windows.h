// Included by the sources of the windows.
#pragma once

#include "gui.h"

#include <QtWidgets>
