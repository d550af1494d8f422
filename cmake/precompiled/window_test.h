// What the tests of the windows read.
#pragma once

#include "windows.h"

#include <QTest>
#include <QtNetwork>

#include <gtest/gtest.h>
