// SPDX-License-Identifier: Apache-2.0
// Draws the program's icon: a stereo camera seen from the front, one lens in each colour of red-cyan glasses.
//
// DrawIcon FOLDER writes FOLDER/default.ico with all sizes and FOLDER/SIZE.png for each. The drawing is laid out on
// a grid of 16 × 16, so that its edges fall on whole pixels in every size; details come with the size.

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cstdio>

namespace {

const QColor bodyTop(92, 104, 118);
const QColor bodyBottom(52, 60, 70);
const QColor bodyEdge(30, 35, 42);
const QColor foot(70, 79, 90);
const QColor barrel(20, 23, 28);
const QColor rim(150, 162, 175);
const QColor redGlass(232, 74, 66);
const QColor cyanGlass(44, 190, 222);
const QColor lamp(134, 224, 96);

void drawBody(QPainter& painter, int size)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(foot);
    painter.drawRect(QRectF(6, 13, 4, 1));
    painter.drawRoundedRect(QRectF(4, 14, 8, 1), 0.4, 0.4);

    QLinearGradient shade(0, 3, 0, 13);
    shade.setColorAt(0, bodyTop);
    shade.setColorAt(1, bodyBottom);
    painter.setBrush(bodyEdge);
    painter.drawRoundedRect(QRectF(0, 3, 16, 10), 2.6, 2.6);
    painter.setBrush(shade);
    const double edge = size < 32 ? 1.0 : 0.5; // at least one whole pixel
    painter.drawRoundedRect(QRectF(edge, 3 + edge, 16 - 2 * edge, 10 - 2 * edge), 2.6 - edge, 2.6 - edge);
}

void drawLens(QPainter& painter, double left, const QColor& colour, int size)
{
    const QRectF outer(left, 5, 6, 6);
    const QPointF centre = outer.center();
    painter.setPen(Qt::NoPen);
    painter.setBrush(size < 32 ? barrel : rim);
    painter.drawEllipse(outer);
    if (size >= 32) {
        painter.setBrush(barrel);
        painter.drawEllipse(outer.adjusted(0.35, 0.35, -0.35, -0.35));
    }
    QRadialGradient glass(centre + QPointF(-0.5, -0.7), 2.6);
    glass.setColorAt(0, colour.lighter(size < 32 ? 110 : 135));
    glass.setColorAt(0.55, colour);
    glass.setColorAt(1, colour.darker(size < 32 ? 125 : 210));
    painter.setBrush(glass);
    painter.drawEllipse(outer.adjusted(1, 1, -1, -1));
    if (size >= 48) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(255, 255, 255, 46), 0.14));
        painter.drawEllipse(centre, 1.3, 1.3);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(10, 12, 16, 150));
        painter.drawEllipse(centre, 0.72, 0.72);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, size < 32 ? 150 : 200));
    if (size < 32)
        painter.drawRect(QRectF(left + 2, 7, 1, 1));
    else
        painter.drawEllipse(centre + QPointF(-0.8, -0.85), 0.5, 0.42);
}

QImage draw(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);
    drawBody(painter, size);
    drawLens(painter, 1, redGlass, size);
    drawLens(painter, 9, cyanGlass, size);
    if (size >= 32) {
        painter.setBrush(lamp);
        painter.drawEllipse(QPointF(8, 5.6), 0.4, 0.4);
    }
    return image;
}

QByteArray png(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// An icon file whose pictures are PNG files.
QByteArray ico(const QList<int>& sizes, const QList<QByteArray>& pictures)
{
    constexpr int headerSize = 6;
    constexpr int entrySize = 16;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint16(0) << quint16(1) << quint16(sizes.size());
    auto offset = static_cast<quint32>(headerSize + entrySize * sizes.size());
    for (int i = 0; i < sizes.size(); ++i) {
        const auto edge = static_cast<quint8>(sizes[i] % 256); // 0 stands for 256
        const auto length = static_cast<quint32>(pictures[i].size());
        stream << edge << edge << quint8(0) << quint8(0) << quint16(1) << quint16(32) << length << offset;
        offset += length;
    }
    for (const QByteArray& picture : pictures)
        stream.writeRawData(picture.constData(), picture.size());
    return bytes;
}

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QString folder = QCoreApplication::arguments().value(1, QStringLiteral("."));
    const QList<int> sizes = {16, 24, 32, 48, 64, 128, 256};
    QList<QByteArray> pictures;
    for (const int size : sizes) {
        pictures.append(png(draw(size)));
        if (!write(QStringLiteral("%1/%2.png").arg(folder).arg(size), pictures.last())) {
            std::fputs("cannot write a picture\n", stderr);
            return 1;
        }
    }
    return write(folder + QStringLiteral("/default.ico"), ico(sizes, pictures)) ? 0 : 1;
}
