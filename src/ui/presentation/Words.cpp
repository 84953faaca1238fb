#include "ui/presentation/Words.h"

#include <QtQml/QQmlEngine>

#include <utility>

namespace swabby {

Words::Words(MachineWords words, QObject *parent) : QObject(parent), m_words(std::move(words)) {}

Words *Words::create(QQmlEngine *engine, QJSEngine *)
{
    auto *words = engine->findChild<Words *>(QString(), Qt::FindDirectChildrenOnly);
    if (words == nullptr)
        words = new Words(MachineWords(), engine);
    QJSEngine::setObjectOwnership(words, QJSEngine::CppOwnership);
    return words;
}

} // namespace swabby
