// What the tests of the layers without windows read.
#pragma once

#include "gui.h"

#include <QSignalSpy>

#include <gtest/gtest.h>
