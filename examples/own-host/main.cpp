// A graph in a window of SDL 2: what a host does for the views of the library, whole. Wheel, buttons and keys have the gestures of GraphInteraction; u undoes, r redoes, Escape ends.

#include <TOLVGraphing/data/SeriesColors.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/graphics/PixelAlignedContext.h>
#include <TOLVGraphing/views/GraphDisplayObserver.h>
#include <TOLVGraphing/views/GraphInteraction.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/output/PixelDrawing.h>
#include <desktop/text/PangoTextSystem.h>

#include <SDL.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace TOLVGraphing;

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 400;

std::shared_ptr<TOLVGraph> dyingTone()
{
    std::vector<float> x(1'000'000), y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<float>(i) * 1e-5F;
        y[i] = std::sin(20.0F * x[i]) * std::exp(-0.3F * x[i]);
    }
    auto graph = TOLVGraph::graph();
    graph->addGraphData(TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), seriesColor(0)));
    graph->setExtents(graph->extentsFittingGraphData());
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->attachUndoManager(std::make_shared<UndoManager>());
    return graph;
}

/// A window that shows one graph. Its surface has a pixel for each point, the first row at the top.
class GraphWindow {
public:
    explicit GraphWindow(const std::shared_ptr<TOLVGraph>& graph)
        : m_window(SDL_CreateWindow("Own host", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, kWidth, kHeight, SDL_WINDOW_RESIZABLE), &SDL_DestroyWindow)
        , m_view(TOLVGraphView::initWithFrame({0.0, 0.0, kWidth, kHeight}))
        , m_interaction(m_view)
        , m_observer(graph, [this] { m_view->setNeedsDisplay(); })
    {
        if (!m_window)
            throw std::runtime_error(SDL_GetError());
        m_view->setFitsMarginsToLabels(true);
        m_view->setGraph(graph);
    }

    /// Until the user has had enough. Looks for events a hundred times a second: where SDL waits for them, it sends itself messages through the window, and one that comes after the window has gone is an error.
    void run()
    {
        for (;; SDL_Delay(10)) {
            for (SDL_Event event; SDL_PollEvent(&event) != 0; m_isShown = false) {
                if (event.type == SDL_QUIT || (event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_ESCAPE))
                    return;
                answer(event);
            }
            if (!std::exchange(m_isShown, true))
                show();
        }
    }

private:
    void answer(const SDL_Event& event)
    {
        switch (event.type) {
        case SDL_MOUSEMOTION: m_interaction.pointerMoved(pointInView(event.motion.x, event.motion.y)); break;
        case SDL_MOUSEBUTTONDOWN: press(event.button); break;
        case SDL_MOUSEBUTTONUP: m_interaction.pointerReleased(pointInView(event.button.x, event.button.y), buttonOf(event.button)); break;
        case SDL_MOUSEWHEEL:
            m_interaction.wheelTurned(static_cast<double>(event.wheel.preciseY), pointInView(event.wheel.mouseX, event.wheel.mouseY), modifiersOf(SDL_GetModState()));
            break;
        case SDL_KEYDOWN: pressKey(event.key.keysym); break;
        case SDL_WINDOWEVENT: answerWindow(event.window); break;
        default: break;
        }
    }

    void press(const SDL_MouseButtonEvent& event)
    {
        const Point point = pointInView(event.x, event.y);
        if (event.button == SDL_BUTTON_LEFT && event.clicks == 2)
            m_interaction.pointerDoubleClicked(point);
        else
            m_interaction.pointerPressed(point, buttonOf(event));
    }

    void pressKey(const SDL_Keysym& key)
    {
        static const std::map<SDL_Keycode, GraphKey> kKeys{{SDLK_LEFT, GraphKey::Left}, {SDLK_RIGHT, GraphKey::Right}, {SDLK_UP, GraphKey::Up}, {SDLK_DOWN, GraphKey::Down},
            {SDLK_PLUS, GraphKey::ZoomIn}, {SDLK_MINUS, GraphKey::ZoomOut}, {SDLK_HOME, GraphKey::Fit}, {SDLK_m, GraphKey::PlaceMarker}, {SDLK_n, GraphKey::NextMarker},
            {SDLK_DELETE, GraphKey::Delete}, {SDLK_u, GraphKey::Undo}, {SDLK_r, GraphKey::Redo}};
        if (const auto found = kKeys.find(key.sym); found != kKeys.end())
            m_interaction.keyPressed(found->second, modifiersOf(key.mod));
    }

    void answerWindow(const SDL_WindowEvent& event)
    {
        if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED)
            m_view->setFrameSize({static_cast<double>(event.data1), static_cast<double>(event.data2)});
        else if (event.event == SDL_WINDOWEVENT_LEAVE)
            m_interaction.pointerLeft();
    }

    /// The graph where it asks for it, and above it what the gestures say.
    void show()
    {
        SDL_Surface* screen = SDL_GetWindowSurface(m_window.get());
        if (!screen)
            return;
        if (!m_picture || m_picture->w != screen->w || m_picture->h != screen->h || m_view->needsDisplay())
            drawPicture(screen->w, screen->h);
        SDL_BlitSurface(m_picture.get(), nullptr, screen, nullptr);
        if (const auto box = m_interaction.selectionBox())
            drawBox(*box, screen);
        SDL_UpdateWindowSurface(m_window.get());
        SDL_SetWindowTitle(m_window.get(), m_interaction.readoutText().c_str());
    }

    void drawPicture(int width, int height)
    {
        m_picture.reset(SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_ARGB8888));
        if (!m_picture)
            throw std::runtime_error(SDL_GetError());
        const PixelMemory memory{static_cast<unsigned char*>(m_picture->pixels), width, height, m_picture->pitch};
        drawOnPixels(memory, 1.0, [&](DrawingContext& context) {
            PixelAlignedContext aligned(context, 1.0);
            m_view->displayInContext(aligned);
        });
    }

    static void drawBox(const Rect& box, SDL_Surface* screen)
    {
        const SDL_Rect area{static_cast<int>(box.x()), static_cast<int>(screen->h - box.maxY()), static_cast<int>(box.width()), static_cast<int>(box.height())};
        const Uint32 grey = SDL_MapRGB(screen->format, 128, 128, 128);
        for (const SDL_Rect& side : {SDL_Rect{area.x, area.y, area.w, 1}, {area.x, area.y + area.h, area.w, 1}, {area.x, area.y, 1, area.h}, {area.x + area.w, area.y, 1, area.h}})
            SDL_FillRect(screen, &side, grey);
    }

    /// The middle of a pixel; in a view y grows upwards.
    [[nodiscard]] Point pointInView(int x, int y) const { return {x + 0.5, m_view->frame().height() - (y + 0.5)}; }
    [[nodiscard]] static PointerButton buttonOf(const SDL_MouseButtonEvent& event) { return event.button == SDL_BUTTON_LEFT ? PointerButton::Primary : PointerButton::Secondary; }
    [[nodiscard]] static KeyModifiers modifiersOf(int modifiers) { return {(modifiers & KMOD_SHIFT) != 0, (modifiers & KMOD_CTRL) != 0}; }

    std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> m_window;
    std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> m_picture{nullptr, &SDL_FreeSurface};
    std::shared_ptr<TOLVGraphView> m_view;
    GraphInteraction m_interaction;
    GraphDisplayObserver m_observer;
    bool m_isShown = false;
};

} // namespace

int main(int, char**)
{
    try {
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"); // The pixels are there already, and go to the screen without OpenGL.
        if (SDL_Init(SDL_INIT_VIDEO) != 0)
            throw std::runtime_error(SDL_GetError());
        installDesktopTextSystem();
        GraphWindow(dyingTone()).run();
        SDL_Quit();
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "own-host: %s\n", problem.what());
        return 1;
    }
}
