#include "ui/qmltypes/RemovalBannerView.h"

#include "cleanup/CleanupReport.h"
#include "flows/cleanup/CleanupFlow.h"
#include "ui/presentation/CleanupText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <QtQml/QQmlEngine>

#include <utility>

namespace swabby {

RemovalBannerView::RemovalBannerView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                                     QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    if (m_context.state != nullptr)
        connect(m_context.state, &AppState::changed, this, &RemovalBannerView::changed);
    if (m_context.cleanup == nullptr)
        return;
    connect(m_context.cleanup, &CleanupFlow::removed, this, [this](const CleanupReport &report) {
        Q_EMIT changed();
        m_coordinator.setNotice(oneLine(leftText(report)));
    });
    connect(m_context.cleanup, &CleanupFlow::putBackChanged, this, &RemovalBannerView::changed);
    connect(m_context.cleanup, &CleanupFlow::restored, this, [this](qint64 restored, qint64 left) {
        Q_EMIT changed();
        if (std::exchange(m_asked, false))
            m_coordinator.setNotice(putBackText(restored, left));
    });
}

bool RemovalBannerView::isRemoving() const
{
    return m_context.state != nullptr && m_context.state->isRemoving();
}

QString RemovalBannerView::text() const
{
    const auto *report = m_context.state == nullptr || !m_context.state->lastCleanup()
                             ? nullptr
                             : &*m_context.state->lastCleanup();
    return report == nullptr ? QString() : bannerText(*report);
}

bool RemovalBannerView::canPutBack() const
{
    return m_context.cleanup != nullptr && m_context.cleanup->canPutBack();
}

void RemovalBannerView::putBack()
{
    if (!canPutBack())
        return;
    m_asked = true;
    m_context.cleanup->putBack();
    Q_EMIT changed();
}

} // namespace swabby
