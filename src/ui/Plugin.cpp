#include "ui/WindowLibrary.h"

// The one name of this library that the application looks for.
extern "C" Q_DECL_EXPORT swabby::UserInterface *
swabbyUserInterface(const swabby::UserInterfaceContext &context)
{
    return new swabby::WindowLibrary(context);
}
