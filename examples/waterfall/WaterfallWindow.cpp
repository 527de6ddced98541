#include "WaterfallWindow.h"

#include "WaterfallScene.h"

#include <hosts/qt6/DisplayGuard.h>

#include <QApplication>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QSurfaceFormat>

#include <optional>

namespace {

class WaterfallWidget final : public QOpenGLWidget {
public:
    WaterfallWidget(const Decay& decay, const std::string& title) : m_scene(decay, title) { setWindowTitle(QString::fromStdString(title)); }
    ~WaterfallWidget() override { deleteTextures(); }

protected:
    void initializeGL() override
    {
        // A window that moves to another screen may get another context; the textures go before the old one does.
        connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { deleteTextures(); });
    }
    void paintGL() override
    {
        const double ratio = devicePixelRatioF();
        m_scene.draw(qRound(width() * ratio), qRound(height() * ratio), ratio);
    }

private:
    void deleteTextures()
    {
        makeCurrent();
        m_scene.deleteTextures();
        doneCurrent();
    }

    WaterfallScene m_scene;
};

} // namespace

int showWaterfall(int argumentCount, char** arguments, const Decay& decay, const std::string& title)
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setSamples(4);
    QSurfaceFormat::setDefaultFormat(format);
    std::optional<TOLVGraphing::DisplayGuard> guard(std::in_place, QStringLiteral("waterfall"), QStringLiteral("--output FILE.png needs none"));
    const QApplication application(argumentCount, arguments);
    guard.reset();
    WaterfallWidget window(decay, title);
    window.resize(800, 560);
    window.show();
    return QApplication::exec();
}
