#include "cameras/ShownAddress.h"

#include "cameras/Credentials.h"

namespace velmora {

QString shownAddress(const QString &url)
{
    const QString shown = addressWithoutCredentials(url);
    for (const QLatin1String scheme : {QLatin1String("http://"), QLatin1String("https://"),
                                       QLatin1String("rtsp://"), QLatin1String("rtsps://")}) {
        if (shown.startsWith(scheme, Qt::CaseInsensitive)) {
            return shown.sliced(scheme.size());
        }
    }
    return shown;
}

} // namespace velmora
