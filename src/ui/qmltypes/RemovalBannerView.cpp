#include "ui/qmltypes/RemovalBannerView.h"

#include "cleanup/CleanupReport.h"
#include "ui/presentation/PlainWords.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <utility>

namespace swabby {

RemovalBannerView::RemovalBannerView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                                     QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
    connect(&m_context.state, &AppState::changed, this, &RemovalBannerView::changed);
    connect(&m_context.cleanup, &CleanupFlow::removed, this, [this](const CleanupReport &report) {
        Q_EMIT changed();
        m_coordinator.setNotice(oneLine(leftText(report)));
    });
    connect(&m_context.cleanup, &CleanupFlow::putBackChanged, this, &RemovalBannerView::changed);
    connect(&m_context.cleanup, &CleanupFlow::restored, this, [this](qint64 restored, qint64 left) {
        Q_EMIT changed();
        if (std::exchange(m_asked, false))
            m_coordinator.setNotice(putBackText(restored, left), left > 0 ? Tint::orange : Tint::green);
    });
}

void RemovalBannerView::putBack()
{
    if (!canPutBack())
        return;
    m_asked = true;
    m_context.cleanup.putBack();
    Q_EMIT changed();
}

} // namespace swabby
