#include "ui/platform/qmlmodule.h"

#include <QByteArray>

#include <string_view>

void qml_register_types_BrindlecoveConnectorGUI();

// The linker takes only referenced objects from a static library. With Qt 6.8 that concerns the compiled QML
// too, without which the QML would be compiled at each start.
void registerQmlModule()
{
    Q_INIT_RESOURCE(qmlcache_connectorgui);
    qml_register_types_BrindlecoveConnectorGUI();

    // Compiled QML works with the Qt version that it was made with only. With another version, Qt would
    // compile it again and store the result in the user's home, where this program writes nothing.
    if (std::string_view(qVersion()) != QT_VERSION_STR) {
        qputenv("QML_DISABLE_DISK_CACHE", "1");
    }
}
