#include "start/Renderer.h"

#include <QDir>
#include <QFile>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <algorithm>
#include <iterator>

namespace vellmoor {
namespace {

bool isChosen() {
    constexpr const char* variables[] = {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND"};
    return std::any_of(std::begin(variables), std::end(variables),
                       [](const char* variable) { return qEnvironmentVariableIsSet(variable); });
}

/// Loading an OpenGL library takes longer than all the rest of the start; without a device it is not worth trying.
bool hasGraphicsDevice() {
    return !QDir(QStringLiteral("/dev/dri")).entryList({QStringLiteral("renderD*")}, QDir::System).isEmpty() ||
           QFile::exists(QStringLiteral("/dev/nvidiactl")) || QFile::exists(QStringLiteral("/dev/dxg"));
}

/// OpenGL on the processor is slower and needs far more memory than the software renderer, which draws this window as
/// well; without any OpenGL Qt Quick would end the program.
bool drawsWithGraphicsProcessor() {
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) {
        return false;
    }
    const auto* name = context.functions()->glGetString(GL_RENDERER);
    const QByteArray renderer = name == nullptr ? QByteArray() : QByteArray(reinterpret_cast<const char*>(name));
    context.doneCurrent();
    return !renderer.isEmpty() && !renderer.contains("llvmpipe") && !renderer.contains("softpipe") &&
           !renderer.contains("SwiftShader");
}

} // namespace

void chooseRenderer() {
    if (!isChosen() && !(hasGraphicsDevice() && drawsWithGraphicsProcessor())) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}

} // namespace vellmoor
