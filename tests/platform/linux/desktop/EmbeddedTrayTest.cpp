#include "OwnDisplay.h"
#include "platform/linux/desktop/EmbeddedTrayItem.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtTest/QTest>

using namespace swabby;

namespace {

/// A real panel without transparency, along the upper edge.
class Panel {
public:
    Panel()
    {
        m_process.start(u"trayer"_qs, {u"--edge"_qs, u"top"_qs, u"--align"_qs, u"left"_qs});
        m_process.waitForStarted();
    }
    ~Panel()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

/// A disc that leaves the corners open.
TrayPicture discOf(const QColor &color)
{
    const auto draw = [color](int side) {
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(image.rect());
        return image;
    };
    return {draw, u"46%"_qs};
}

QImage screenImage()
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

/// Where the screen has exactly that colour; empty when nowhere.
QRect placeOf(const QColor &color)
{
    const QImage screen = screenImage();
    QRect place;
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            if (screen.pixelColor(x, y) == color)
                place |= QRect(x, y, 1, 1);
    return place;
}

bool isSeen(const QColor &color)
{
    return waitUntil([&] { return !placeOf(color).isEmpty(); });
}

bool click(const QPoint &point, int button)
{
    return QProcess::execute(u"xdotool"_qs,
                             {u"mousemove"_qs, QString::number(point.x()), QString::number(point.y()),
                              u"click"_qs, QString::number(button)}) == 0;
}

} // namespace

class EmbeddedTrayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePanelTakesTheItemIn()
    {
        EmbeddedTrayItem item;
        QVERIFY(item.place() == TrayItem::Place::none);
        int changes = 0;
        connect(&item, &TrayItem::placeChanged, this, [&] { ++changes; });
        item.show(discOf(Qt::green)); // before there is a panel
        const Panel panel;
        QVERIFY(isSeen(Qt::green));
        QVERIFY(item.place() == TrayItem::Place::there && changes > 0);
        const QRect disc = placeOf(Qt::green);
        QVERIFY(disc.width() >= 16 && qAbs(disc.width() - disc.height()) <= 1);
        // The panel's own background is seen around it.
        const QImage screen = screenImage();
        const QRgb around = screen.pixel(disc.left() - 1, disc.top());
        QCOMPARE(screen.pixel(disc.topLeft()), around);
        QCOMPARE(screen.pixel(disc.bottomRight()), around);
        QVERIFY(qAlpha(around) == 255 && qGray(around) > 128);

        item.show(discOf(Qt::red));
        QVERIFY(isSeen(Qt::red));
        QVERIFY(placeOf(Qt::green).isEmpty());

        QList<QRect> activated, menuWanted;
        connect(&item, &TrayItem::activated, this, [&](const QRect &where) { activated += where; });
        connect(&item, &TrayItem::menuWanted, this, [&](const QRect &where) { menuWanted += where; });
        QVERIFY(click(disc.center(), 1));
        QVERIFY(waitUntil([&] { return activated.size() == 1; }));
        QVERIFY(activated.first().contains(disc));
        QVERIFY(activated.first().width() <= disc.width() + 8);
        QVERIFY(click(disc.center(), 3));
        QVERIFY(waitUntil([&] { return menuWanted.size() == 1; }));
        QCOMPARE(activated.size(), 1);

        item.hide();
        QVERIFY(waitUntil([] { return placeOf(Qt::red).isEmpty(); }));
    }

    void theItemFollowsThePanel()
    {
        auto panel = std::make_unique<Panel>();
        EmbeddedTrayItem item;
        QVERIFY(waitUntil([&] { return item.place() == TrayItem::Place::there; }));
        item.show(discOf(Qt::green));
        QVERIFY(isSeen(Qt::green));
        panel.reset();
        QVERIFY(waitUntil([&] { return item.place() == TrayItem::Place::none; }));
        QVERIFY(placeOf(Qt::green).isEmpty()); // nor does it stand about alone
        panel = std::make_unique<Panel>();
        QVERIFY(isSeen(Qt::green));
    }
};

int main(int argc, char *argv[])
{
    return runOnOwnDisplay<EmbeddedTrayTest>(argc, argv);
}
#include "EmbeddedTrayTest.moc"
