#include "ui/main/ToolbarIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QImage>
#include <QPixmap>
#include <functional>

namespace {
using Drawing = std::function<void(QPainter&)>;

const QColor Ink(40, 40, 40);
const QColor Paper(255, 255, 255);
const QColor Go(30, 150, 40);
const QColor Stop(200, 30, 30);
const QColor Steel(40, 90, 190);
const QColor Folder(230, 180, 50);

// Drawn on a 16 by 16 grid and scaled, so the larger sizes stay sharp.
QImage Drawn(const Drawing& draw, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(size / 16.0, size / 16.0);
    draw(p);
    return image;
}

QIcon Picture(const Drawing& draw, std::initializer_list<int> sizes = {16, 32})
{
    QIcon icon;
    for (int size : sizes)
        icon.addPixmap(QPixmap::fromImage(Drawn(draw, size)));
    return icon;
}

void Page(QPainter& p, const QRectF& r)
{
    const qreal fold = 3;
    QPainterPath path;
    path.moveTo(r.left(), r.top());
    path.lineTo(r.right() - fold, r.top());
    path.lineTo(r.right(), r.top() + fold);
    path.lineTo(r.right(), r.bottom());
    path.lineTo(r.left(), r.bottom());
    path.closeSubpath();
    p.setPen(QPen(Ink, 1));
    p.setBrush(Paper);
    p.drawPath(path);
    p.drawLine(QPointF(r.right() - fold, r.top()), QPointF(r.right() - fold, r.top() + fold));
    p.drawLine(QPointF(r.right() - fold, r.top() + fold), QPointF(r.right(), r.top() + fold));
}

void TextLines(QPainter& p, const QRectF& r)
{
    p.setPen(QPen(QColor(120, 120, 120), 1));
    for (qreal y = r.top() + 4; y < r.bottom() - 1; y += 2.5)
        p.drawLine(QPointF(r.left() + 2, y), QPointF(r.right() - 2, y));
}

void Triangle(QPainter& p, qreal x, qreal top, qreal width, qreal height, const QColor& colour)
{
    const QPointF points[] = {{x, top}, {x + width, top + height / 2}, {x, top + height}};
    p.setPen(QPen(colour.darker(140), 1));
    p.setBrush(colour);
    p.drawPolygon(points, 3);
}

void Arrow(QPainter& p, const QPainterPath& shaft, const QPointF& tip, qreal angleDegrees, const QColor& colour)
{
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(colour, 1.8, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(shaft);
    p.save();
    p.translate(tip);
    p.rotate(angleDegrees);
    const QPointF head[] = {{0, 0}, {-4.5, -3}, {-4.5, 3}};
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawPolygon(head, 3);
    p.restore();
}

void Magnifier(QPainter& p)
{
    p.setPen(QPen(Ink, 1.6));
    p.setBrush(QColor(200, 225, 255));
    p.drawEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
    p.setPen(QPen(QColor(120, 70, 20), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(10, 10), QPointF(14.5, 14.5));
}

void CodeRows(QPainter& p)
{
    p.setPen(QPen(QColor(130, 130, 130), 1.2));
    for (qreal y : {3.0, 8.0, 13.0})
        p.drawLine(QPointF(9, y), QPointF(15, y));
}

struct Entry {
    const char* toolTip;
    void (*draw)(QPainter&);
};

const Entry Pictures[] = {
    {"New", [](QPainter& p) { Page(p, QRectF(3.5, 1.5, 10, 13)); }},
    {"Open", [](QPainter& p) {
         p.setPen(QPen(Ink, 1));
         p.setBrush(Folder.darker(115));
         p.drawRect(QRectF(1.5, 3.5, 11, 10));
         const QPointF flap[] = {{3.5, 7.5}, {15, 7.5}, {12.5, 13.5}, {1.5, 13.5}};
         p.setBrush(Folder);
         p.drawPolygon(flap, 4);
     }},
    {"Save", [](QPainter& p) {
         p.setPen(QPen(Ink, 1));
         p.setBrush(Steel);
         p.drawRect(QRectF(1.5, 1.5, 13, 13));
         p.setBrush(Paper);
         p.drawRect(QRectF(4, 1.5, 8, 5));
         p.setBrush(QColor(200, 200, 200));
         p.drawRect(QRectF(4, 9.5, 8, 5));
     }},
    {"Print", [](QPainter& p) {
         p.setPen(QPen(Ink, 1));
         p.setBrush(Paper);
         p.drawRect(QRectF(4.5, 1.5, 7, 5));
         p.setBrush(QColor(170, 170, 170));
         p.drawRoundedRect(QRectF(1.5, 6.5, 13, 6), 1.5, 1.5);
         p.setBrush(Paper);
         p.drawRect(QRectF(4.5, 10.5, 7, 4));
         p.setPen(QPen(Go, 1.5));
         p.drawPoint(QPointF(12.5, 8.5));
     }},
    {"Cut", [](QPainter& p) {
         p.setPen(QPen(Ink, 1.3));
         p.drawLine(QPointF(4, 1.5), QPointF(10, 11));
         p.drawLine(QPointF(12, 1.5), QPointF(6, 11));
         p.setPen(QPen(Stop, 1.5));
         p.setBrush(Qt::NoBrush);
         p.drawEllipse(QPointF(4.5, 12.5), 2.5, 2.5);
         p.drawEllipse(QPointF(11.5, 12.5), 2.5, 2.5);
     }},
    {"Copy", [](QPainter& p) {
         Page(p, QRectF(1.5, 1.5, 8, 10));
         Page(p, QRectF(6.5, 4.5, 8, 10));
     }},
    {"Paste", [](QPainter& p) {
         p.setPen(QPen(Ink, 1));
         p.setBrush(QColor(190, 140, 80));
         p.drawRoundedRect(QRectF(1.5, 2.5, 10, 12), 1, 1);
         p.setBrush(QColor(200, 200, 200));
         p.drawRect(QRectF(4, 1, 5, 3));
         Page(p, QRectF(7.5, 6.5, 7, 8.5));
     }},
    {"Undo", [](QPainter& p) {
         QPainterPath path(QPointF(13, 13));
         path.cubicTo(QPointF(14, 5), QPointF(8, 3.5), QPointF(4, 6.5));
         Arrow(p, path, QPointF(2.5, 8), 140, Steel);
     }},
    {"Redo", [](QPainter& p) {
         QPainterPath path(QPointF(3, 13));
         path.cubicTo(QPointF(2, 5), QPointF(8, 3.5), QPointF(12, 6.5));
         Arrow(p, path, QPointF(13.5, 8), 40, Steel);
     }},
    {"Find", [](QPainter& p) { Magnifier(p); }},
    {"Find Next", [](QPainter& p) {
         p.save();
         p.translate(-1, -1);
         p.scale(0.85, 0.85);
         Magnifier(p);
         p.restore();
         Triangle(p, 10.5, 9, 5, 6.5, Go);
     }},
    {"Assemble", [](QPainter& p) {
         // A source page turning into code: page, arrow, and a chip's pins.
         Page(p, QRectF(0.5, 1.5, 8, 11));
         TextLines(p, QRectF(0.5, 1.5, 8, 11));
         p.setPen(QPen(Ink, 1));
         p.setBrush(QColor(60, 60, 60));
         p.drawRect(QRectF(9.5, 7.5, 5, 7));
         p.setPen(QPen(QColor(180, 180, 180), 1));
         for (qreal y : {9.0, 11.0, 13.0}) {
             p.drawLine(QPointF(8.3, y), QPointF(9.5, y));
             p.drawLine(QPointF(14.5, y), QPointF(15.7, y));
         }
         QPainterPath shaft(QPointF(6, 6));
         shaft.lineTo(QPointF(11, 6));
         Arrow(p, shaft, QPointF(14, 6), 0, Go);
     }},
    {"Download", [](QPainter& p) {
         p.setPen(QPen(Ink, 1));
         p.setBrush(QColor(60, 60, 60));
         p.drawRect(QRectF(3.5, 10.5, 9, 5));
         p.setPen(QPen(QColor(180, 180, 180), 1));
         for (qreal x : {5.0, 8.0, 11.0})
             p.drawLine(QPointF(x, 9.5), QPointF(x, 10.5));
         QPainterPath shaft(QPointF(8, 0.5));
         shaft.lineTo(QPointF(8, 5));
         Arrow(p, shaft, QPointF(8, 9), 90, Steel);
     }},
    {"Run", [](QPainter& p) { Triangle(p, 3.5, 1.5, 10, 13, Go); }},
    {"Play", [](QPainter& p) {
         Triangle(p, 0.5, 3, 7.5, 10, Go);
         Triangle(p, 7.5, 3, 7.5, 10, Go);
     }},
    {"Animate", [](QPainter& p) {
         // Steps one after another: a trail of dots behind the triangle.
         p.setPen(Qt::NoPen);
         p.setBrush(Go.lighter(130));
         p.drawEllipse(QPointF(2, 8), 1.3, 1.3);
         p.drawEllipse(QPointF(5.5, 8), 1.3, 1.3);
         Triangle(p, 8, 2.5, 7.5, 11, Go);
     }},
    {"Pause", [](QPainter& p) {
         p.setPen(QPen(Steel.darker(140), 1));
         p.setBrush(Steel);
         p.drawRect(QRectF(3.5, 2.5, 3, 11));
         p.drawRect(QRectF(9.5, 2.5, 3, 11));
     }},
    {"Step Into", [](QPainter& p) {
         CodeRows(p);
         QPainterPath shaft(QPointF(2, 1.5));
         shaft.cubicTo(QPointF(7, 1.5), QPointF(7, 4), QPointF(5, 7));
         Arrow(p, shaft, QPointF(4, 9.5), 110, Steel);
         p.setPen(Qt::NoPen);
         p.setBrush(Stop);
         p.drawEllipse(QPointF(4, 13), 2, 2);
     }},
    {"Step Over", [](QPainter& p) {
         CodeRows(p);
         QPainterPath shaft(QPointF(2, 10));
         shaft.cubicTo(QPointF(2, 1), QPointF(11, 1), QPointF(11.5, 7));
         Arrow(p, shaft, QPointF(12, 10), 90, Steel);
         p.setPen(Qt::NoPen);
         p.setBrush(Stop);
         p.drawEllipse(QPointF(6.5, 13), 2, 2);
     }},
    {"Run To Cursor", [](QPainter& p) {
         QPainterPath shaft(QPointF(1, 8));
         shaft.lineTo(QPointF(7.5, 8));
         Arrow(p, shaft, QPointF(11, 8), 0, Go);
         // A text cursor, the I-beam, where the run stops.
         p.setPen(QPen(Ink, 1.3));
         p.drawLine(QPointF(13.5, 2), QPointF(13.5, 14));
         p.drawLine(QPointF(11.5, 2), QPointF(15.5, 2));
         p.drawLine(QPointF(11.5, 14), QPointF(15.5, 14));
     }},
    {"Step Out", [](QPainter& p) {
         p.setPen(QPen(Ink, 1));
         p.setBrush(QColor(230, 230, 230));
         p.drawRect(QRectF(1.5, 7.5, 9, 7));
         QPainterPath shaft(QPointF(6, 11));
         shaft.cubicTo(QPointF(6, 4), QPointF(8, 3), QPointF(11, 3));
         Arrow(p, shaft, QPointF(14.5, 3), 0, Steel);
     }},
    {"Toggle Breakpoint", [](QPainter& p) {
         p.setPen(QPen(Stop.darker(150), 1));
         p.setBrush(Stop);
         p.drawEllipse(QPointF(8, 8), 6, 6);
         p.setPen(Qt::NoPen);
         p.setBrush(QColor(255, 255, 255, 110));
         p.drawEllipse(QPointF(6.2, 6), 2, 1.5);
     }},
    {"Add Watch", [](QPainter& p) {
         // A pair of glasses: a look at a value.
         p.setPen(QPen(Ink, 1.4));
         p.setBrush(QColor(200, 225, 255));
         p.drawEllipse(QPointF(4, 9), 3, 3);
         p.drawEllipse(QPointF(12, 9), 3, 3);
         p.setBrush(Qt::NoBrush);
         p.drawArc(QRectF(6.5, 7, 3, 3), 0, 180 * 16);
         p.drawLine(QPointF(1, 9), QPointF(0.5, 5));
         p.drawLine(QPointF(15, 9), QPointF(15.5, 5));
         p.setPen(QPen(Go, 1.6));
         p.drawLine(QPointF(12, 0.5), QPointF(12, 4.5));
         p.drawLine(QPointF(10, 2.5), QPointF(14, 2.5));
     }},
    {"About Orvane", [](QPainter& p) {
         p.setPen(QPen(Steel.darker(140), 1));
         p.setBrush(Steel);
         p.drawEllipse(QPointF(8, 8), 7, 7);
         p.setPen(Qt::NoPen);
         p.setBrush(Paper);
         p.drawEllipse(QPointF(8, 4.5), 1.3, 1.3);
         p.drawRect(QRectF(7, 6.8, 2, 6));
     }},
};

void DrawChip(QPainter& p)
{
    p.setPen(QPen(QColor(170, 170, 170), 1));
    for (qreal i = 3.5; i < 13; i += 3) {
        p.drawLine(QPointF(i, 0.5), QPointF(i, 2.5));
        p.drawLine(QPointF(i, 13.5), QPointF(i, 15.5));
        p.drawLine(QPointF(0.5, i), QPointF(2.5, i));
        p.drawLine(QPointF(13.5, i), QPointF(15.5, i));
    }
    p.setPen(QPen(Ink, 1));
    p.setBrush(QColor(50, 50, 60));
    p.drawRoundedRect(QRectF(2.5, 2.5, 11, 11), 1, 1);
    QFont font;
    font.setPixelSize(7);
    font.setBold(true);
    p.setFont(font);
    p.setPen(QColor(120, 200, 255));
    p.drawText(QRectF(2.5, 2.5, 11, 11), Qt::AlignCenter, QStringLiteral("11"));
}
}  // namespace

QIcon ToolbarIcon(const QString& toolTip)
{
    for (const Entry& entry : Pictures)
        if (toolTip == QLatin1String(entry.toolTip))
            return Picture(entry.draw);
    return QIcon();
}

QIcon ProgramIcon()
{
    return Picture(DrawChip, {16, 32, 48, 64});
}

QImage ProgramIconImage(int size)
{
    return Drawn(DrawChip, size);
}
