// What the sources of the windows read.
#pragma once

#include "gui.h"

#include <QtWidgets>
