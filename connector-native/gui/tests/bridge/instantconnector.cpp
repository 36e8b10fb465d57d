#include "instantconnector.h"

#include "bridge/childprocess.h"

InstantConnector &instantConnector()
{
    static InstantConnector connector;
    return connector;
}

ChildResult runChild(const QByteArray &, const QStringList &arguments)
{
    return {instantConnector()(arguments), {}};
}
