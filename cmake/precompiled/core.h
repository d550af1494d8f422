// Included by nearly every source of the layers without pictures.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QObject>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>
