// What the layers with pictures, but without windows, read.
#pragma once

#include "core.h"

#include <QAbstractListModel>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QStringListModel>
