// Included by the tests of the layers without windows.
#pragma once

#include "gui.h"

#include <QSignalSpy>

#include <gtest/gtest.h>
