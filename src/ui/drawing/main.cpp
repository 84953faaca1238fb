// Draws the icons that other people made, for the windows: see IconDrawing.h.

#include "platform/linux/helper/RequestServer.h"
#include "ui/drawing/IconDrawing.h"

using namespace swabby;

int main()
{
    // What the libraries prepare for their first drawing is then there for all.
    drawIcon(iconDrawingRequest(1, R"(<svg xmlns="http://www.w3.org/2000/svg"/>)"));
    return serveRequests(&drawIcon);
}
