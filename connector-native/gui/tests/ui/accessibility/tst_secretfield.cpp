#include "support/testprogram.h"
#include "ui/accessibility/accessiblefactory.h"
#include "windowtesting.h"

#include <QtGui/qaccessible.h>
#include <QtGui/qevent.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <memory>

using namespace Qt::StringLiterals;

// What assistive technologies learn of a masked field, and of its neighbour that is not masked.
class TestSecretField : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    std::unique_ptr<TestWindow> m_window;

    void show(const QByteArray &qml)
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport BrindlecoveConnectorGUI\n" + qml, QUrl());
        std::unique_ptr<QObject> root(component.create());
        QVERIFY2(root, qPrintable(component.errorString()));
        m_window = std::make_unique<TestWindow>();
        auto *item = qobject_cast<QQuickItem *>(root.release());
        item->setParent(m_window.get());
        item->setParentItem(m_window->contentItem());
        QVERIFY(m_window->isReady());
    }

    void showField(const QByteArray &type)
    {
        show(type + " { fieldText: ''; placeholder: 'API secret'; width: 200 }");
        QVERIFY(input());
    }

    [[nodiscard]] QQuickItem *root() const { return m_window->contentItem()->childItems().constLast(); }
    [[nodiscard]] QQuickItem *input() const { return root()->property("input").value<QQuickItem *>(); }

private slots:
    void initTestCase()
    {
        m_engine.addImportPath(u":/"_s);
        installAccessibleFactory();
    }

    void cleanup() { m_window.reset(); }

    void aTextInputWithAGuardIsMaskedWhateverTheGuardIsCalled()
    {
        show("TextInput { property SecretGuard anyName: SecretGuard {} text: 'plugh' }");
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(root());
        QVERIFY(interface);
        QCOMPARE(interface->role(), QAccessible::EditableText);
        QVERIFY(interface->state().passwordEdit);
        QCOMPARE(interface->textInterface()->text(0, 5), u"•••••"_s);
    }

    void aTextInputWithoutAGuardIsReadAsItIs()
    {
        show("TextInput { Accessible.role: Accessible.EditableText; text: 'plugh' }");
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(root());
        QVERIFY(interface);
        QVERIFY(!interface->state().passwordEdit);
        QCOMPARE(interface->textInterface()->text(0, 5), u"plugh"_s);
    }

    void aMaskedFieldIsAPasswordFieldOfItsName()
    {
        showField("SecretField");
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(input());
        QVERIFY(interface);
        QCOMPARE(interface->role(), QAccessible::EditableText);
        QCOMPARE(interface->text(QAccessible::Name), u"API secret"_s);
        QVERIFY(interface->state().passwordEdit);
    }
};

static const TestClass<TestSecretField> testSecretField("tst_secretfield");

#include "tst_secretfield.moc"
