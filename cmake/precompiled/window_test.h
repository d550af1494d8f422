// Included by the tests of the windows.
#pragma once

#include "windows.h"

#include <QTest>
#include <QtNetwork>

#include <gtest/gtest.h>
