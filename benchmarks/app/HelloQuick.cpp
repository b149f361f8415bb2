// The rival: the least that a Qt Quick program can do, a window with one text, gone after its first frame.
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

int main(int argc, char** argv) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { width: 380; height: 460; visible: true\n"
                      "Text { anchors.centerIn: parent; text: \"Hello\" } }",
                      {});
    const std::unique_ptr<QObject> root(component.create());
    auto* window = qobject_cast<QQuickWindow*>(root.get());
    if (!window) return 1;
    QObject::connect(window, &QQuickWindow::frameSwapped, &application, &QGuiApplication::quit, Qt::QueuedConnection);
    return application.exec();
}
