// Included by the layers with pictures but without windows.
#pragma once

#include "core.h"

#include <QAbstractListModel>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QStringListModel>
