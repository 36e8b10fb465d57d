#include "ui/platform/qmlmodule.h"

#include <QByteArray>

#include <string_view>

void qml_register_types_BrindlecoveConnectorGUI();

// Of a static library only what somebody refers to is linked. From Qt 6.8 on, that goes for the compiled QML
// as well: without it the QML would be compiled anew at each start.
void registerQmlModule()
{
    Q_INIT_RESOURCE(qmlcache_connectorgui);
    qml_register_types_BrindlecoveConnectorGUI();

    // Compiled QML is for the one version of Qt that it was made with. With another Qt would keep what it
    // compiles in the user's home, where nothing of this program's belongs.
    if (std::string_view(qVersion()) != QT_VERSION_STR) {
        qputenv("QML_DISABLE_DISK_CACHE", "1");
    }
}
