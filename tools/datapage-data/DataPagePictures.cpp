// Draws the pictures of the Data Page into a folder (resources/datapage):
// one schematic of the gang tool post per L5 16-20 gang tool pattern,
// "L5-16-20-<code>.png"; the stock pictures "ODcircle.png" and
// "IDcircle.png"; and the pick button "SELECTION.png".
//
//   datapage-pictures <folder>

#include "datapage/GangToolPatterns.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

using marelon::GangToolPattern;
using marelon::GangToolPatternTable;

namespace {

// ---- what a pattern name says ---------------------------------------------

// Tool places by kind.
struct Places {
    int turn = 0;
    int rotary = 0;
    int face = 0;
    int back = 0;

    Places operator-(const Places& other) const
    {
        return {turn - other.turn, rotary - other.rotary, face - other.face, back - other.back};
    }
    Places operator+(const Places& other) const
    {
        return {turn + other.turn, rotary + other.rotary, face + other.face, back + other.back};
    }
    friend bool operator==(const Places&, const Places&) = default;
};

// A holder block of the post and the places it carries.
struct Block {
    QString code;
    Places places;
};

struct Post {
    QList<Block> blocks;
    Places total;
    bool free = false; // a free tool pattern: the places are the user's to fill
};

// "GTF3613+GSE910(2) 5TURN+4ROTARY+3FACE": the holder codes and the places.
struct Name {
    QStringList holders;
    Places places;
};

Name parseName(const QString& name)
{
    static const QRegularExpression count(QStringLiteral("^(\\d+)(TURN|ROTARY|R|FACE|BACK)$"));
    const qsizetype blank = name.indexOf(u' ');
    Name parsed{name.left(blank).split(u'+'), {}};
    for (const QString& part : name.mid(blank + 1).split(u'+')) {
        const auto match = count.match(part);
        if (!match.hasMatch())
            qFatal("cannot read the tool count \"%s\" of \"%s\"", qPrintable(part), qPrintable(name));
        const int n = match.captured(1).toInt();
        const QString kind = match.captured(2);
        if (kind == QLatin1String("TURN"))
            parsed.places.turn += n;
        else if (kind == QLatin1String("FACE"))
            parsed.places.face += n;
        else if (kind == QLatin1String("BACK"))
            parsed.places.back += n;
        else
            parsed.places.rotary += n;
    }
    return parsed;
}

// The places of the pattern made of exactly these holders.
Places placesOf(const QStringList& holders, const GangToolPatternTable& table)
{
    for (const GangToolPattern& pattern : table) {
        const Name name = parseName(pattern.name);
        if (name.holders == holders)
            return name.places;
    }
    qFatal("no pattern of the holders %s", qPrintable(holders.join(u'+')));
}

// Which block carries which places: the gang tool holder (the first) carries
// what it carries alone; each further block what its addition brings, read
// from the pattern of the holders up to it. A block that takes places of the
// holder's (a negative difference) takes them from the gang tool holder.
Post postOf(const GangToolPattern& pattern, const GangToolPatternTable& table)
{
    const Name name = parseName(pattern.name);
    Post post;
    post.total = name.places;
    Places before = placesOf(name.holders.mid(0, 1), table);
    post.blocks.append({name.holders[0], before});
    for (qsizetype i = 1; i < name.holders.size(); ++i) {
        const Places upTo = i + 1 == name.holders.size() ? name.places : placesOf(name.holders.mid(0, i + 1), table);
        Places added = upTo - before;
        Places& holder = post.blocks[0].places;
        for (auto [take, from] : {std::pair{&added.turn, &holder.turn}, {&added.rotary, &holder.rotary},
                                  {&added.face, &holder.face}, {&added.back, &holder.back}}) {
            if (*take < 0) {
                *from += *take;
                *take = 0;
            }
        }
        post.blocks.append({name.holders[i], added});
        before = upTo;
    }
    Places drawn;
    for (const Block& block : post.blocks)
        drawn = drawn + block.places;
    if (drawn != post.total || post.blocks[0].places.rotary < 0)
        qFatal("the blocks of \"%s\" do not carry its places", qPrintable(pattern.name));
    return post;
}

// A free tool pattern: the largest post, every place free.
Post freePost()
{
    Post post;
    post.free = true;
    post.blocks = {{QStringLiteral("GTF"), {6, 5, 0, 0}}, {QStringLiteral("GSE"), {0, 0, 3, 3}}};
    post.total = {6, 5, 3, 3};
    return post;
}

// ---- drawing ---------------------------------------------------------------------

const QColor kInk(0x26, 0x32, 0x38);
const QColor kCentreLine(0x90, 0xa4, 0xae);
const QColor kTurn(0x54, 0x6e, 0x7a);
const QColor kInsert(0xff, 0xb3, 0x00);
const QColor kRotary(0x1e, 0x88, 0xe5);
const QColor kFace(0x2e, 0x7d, 0x32);
const QColor kBack(0xef, 0x6c, 0x00);
const QColor kFree(0x9e, 0x9e, 0x9e);
const QColor kBody(0xf5, 0xf7, 0xf8);

enum class Kind { Turn, Rotary, Face, Back };

QColor blockColour(const QString& code)
{
    if (code.startsWith(QLatin1String("GSE")))
        return {0xbb, 0xde, 0xfb};
    if (code.startsWith(QLatin1String("GDF")))
        return {0xc8, 0xe6, 0xc9};
    return {0xcf, 0xd8, 0xdc};
}

QFont font(int pixels, bool bold = false)
{
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(pixels);
    f.setBold(bold);
    return f;
}

// A tool place centred at `c`: turning and rotary tools point up to the bar,
// face tools left to the main spindle, back tools right to the back spindle.
// A free place is its outline, dashed.
void drawPlace(QPainter& p, QPointF c, Kind kind, bool free)
{
    p.save();
    p.translate(c);
    const QPen outline(free ? kFree : kInk, 1, free ? Qt::DashLine : Qt::SolidLine);
    const auto fill = [&](const QColor& colour) { return free ? QBrush(Qt::white) : QBrush(colour); };
    p.setPen(outline);
    switch (kind) {
    case Kind::Turn: {
        p.setBrush(fill(kTurn));
        p.drawRect(QRectF(-4, -6, 8, 20));
        p.setBrush(fill(kInsert));
        p.drawPolygon(QPolygonF{{-4, -6}, {4, -6}, {-2, -14}});
        break;
    }
    case Kind::Rotary: {
        p.setBrush(fill(kRotary));
        p.drawRoundedRect(QRectF(-7, 0, 14, 14), 3, 3);
        p.setBrush(fill(kRotary.lighter(150)));
        p.drawPolygon(QPolygonF{{-2, 0}, {2, 0}, {2, -9}, {0, -13}, {-2, -9}});
        break;
    }
    case Kind::Face:
    case Kind::Back: {
        if (kind == Kind::Back)
            p.scale(-1, 1);
        const QColor colour = kind == Kind::Face ? kFace : kBack;
        p.setBrush(fill(colour.lighter(160)));
        p.drawPolygon(QPolygonF{{-1, -2.5}, {-1, 2.5}, {-5, 2.5}, {-8.5, 0}, {-5, -2.5}});
        p.setBrush(fill(colour));
        p.drawRoundedRect(QRectF(-1, -6, 10, 12), 2, 2);
        break;
    }
    }
    p.restore();
}

constexpr int kPitch = 20;  // between two places of a row
constexpr int kRowHeight = 34;
constexpr int kHeader = 18; // the block's code
constexpr int kPad = 7;

struct Row {
    Kind kind;
    int count;
};

QList<Row> rowsOf(const Places& places)
{
    QList<Row> rows;
    for (const Row& row : {Row{Kind::Turn, places.turn}, Row{Kind::Rotary, places.rotary},
                           Row{Kind::Face, places.face}, Row{Kind::Back, places.back}})
        if (row.count > 0)
            rows.append(row);
    return rows;
}

int blockWidth(const Block& block, const QFontMetrics& metrics)
{
    int widest = 0;
    for (const Row& row : rowsOf(block.places))
        widest = std::max(widest, row.count);
    return std::max(widest * kPitch + 2 * kPad, metrics.horizontalAdvance(block.code) + 2 * kPad);
}

void drawBlock(QPainter& p, const QRectF& r, const Block& block, bool free)
{
    p.setPen(QPen(kInk, 1.2));
    p.setBrush(kBody);
    p.drawRoundedRect(r, 4, 4);
    QPainterPath header;
    header.addRoundedRect(QRectF(r.left(), r.top(), r.width(), kHeader + 4), 4, 4);
    header.addRect(QRectF(r.left(), r.top() + kHeader - 2, r.width(), 6));
    p.fillPath(header.simplified(), blockColour(block.code));
    p.setPen(QPen(kInk, 1.2));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(r, 4, 4);
    p.drawLine(QPointF(r.left(), r.top() + kHeader + 2), QPointF(r.right(), r.top() + kHeader + 2));
    p.setFont(font(11, true));
    p.drawText(QRectF(r.left(), r.top(), r.width(), kHeader + 2), Qt::AlignCenter, block.code);

    const QList<Row> rows = rowsOf(block.places);
    const double bodyTop = r.top() + kHeader + 2;
    const double rowsTop = bodyTop + (r.bottom() - bodyTop - rows.size() * kRowHeight) / 2;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const double y = rowsTop + i * kRowHeight + kRowHeight / 2.0;
        const double x0 = r.center().x() - (rows[i].count - 1) * kPitch / 2.0;
        for (int k = 0; k < rows[i].count; ++k)
            drawPlace(p, QPointF(x0 + k * kPitch, y + (rows[i].kind <= Kind::Rotary ? 1 : 0)), rows[i].kind, free);
    }
}

// The words drawn in a gang tool picture, one set per language of the add-in.
struct PictureWords {
    QString fileInfix; // "" for English, "de-" for German: L5-16-20-de-10.png
    QString main, back, turn, rotary, face, backPlaces, freeTool;
};

const PictureWords kPictureLanguages[] = {
    {QString(), QStringLiteral("MAIN"), QStringLiteral("BACK"), QStringLiteral("TURN"), QStringLiteral("ROTARY"),
     QStringLiteral("FACE"), QStringLiteral("BACK"), QStringLiteral("FREE TOOL %1")},
    {QStringLiteral("de-"), QStringLiteral("HAUPT"), QStringLiteral("GEGEN"), QStringLiteral("DREH"),
     QStringLiteral("ANGETR."), QStringLiteral("STIRN"), QStringLiteral("RÜCK"), QStringLiteral("FREIES WERKZEUG %1")},
};

// The bar between the guide bushing (left) and the back spindle (right), to
// which the tools point.
void drawSpindles(QPainter& p, int width, double y, const PictureWords& words)
{
    p.setPen(QPen(kCentreLine, 1, Qt::DashDotLine));
    p.drawLine(QPointF(6, y), QPointF(width - 6, y));
    p.setPen(QPen(kInk, 1));
    p.setBrush(QColor(0xb0, 0xbe, 0xc5));
    p.drawRect(QRectF(6, y - 10, 22, 20));                     // guide bushing
    p.setBrush(QColor(0xe0, 0xe0, 0xe0));
    p.drawRect(QRectF(28, y - 5, 40, 10));                      // the bar
    p.setBrush(QColor(0xb0, 0xbe, 0xc5));
    p.drawRect(QRectF(width - 28, y - 10, 22, 20));             // back spindle
    p.drawRect(QRectF(width - 34, y - 7, 6, 14));               // its chuck
    p.setFont(font(9));
    p.setPen(kInk);
    p.drawText(QRectF(30, y - 20, 80, 12), Qt::AlignLeft | Qt::AlignVCenter, words.main);
    p.drawText(QRectF(width - 116, y - 20, 80, 12), Qt::AlignRight | Qt::AlignVCenter, words.back);
}

// The places by kind, with their counts; a free post has no counts, and a
// kind the post lacks is greyed.
void drawLegend(QPainter& p, const Post& post, const QRectF& area, const PictureWords& words)
{
    const Places& total = post.total;
    const QList<std::tuple<Kind, int, QString>> items{{Kind::Turn, total.turn, words.turn},
                                                      {Kind::Rotary, total.rotary, words.rotary},
                                                      {Kind::Face, total.face, words.face},
                                                      {Kind::Back, total.back, words.backPlaces}};
    constexpr int kIcon = 24;
    p.setFont(font(11));
    const QFontMetrics metrics(p.font());
    QStringList texts;
    double width = 0;
    for (const auto& [kind, count, word] : items) {
        texts << (post.free ? word : QStringLiteral("%1 %2").arg(count).arg(word));
        width += kIcon + metrics.horizontalAdvance(texts.last());
    }
    const double gap = (area.width() - width) / (items.size() + 1);
    double x = area.left() + gap;
    for (qsizetype i = 0; i < items.size(); ++i) {
        const auto& [kind, count, word] = items[i];
        p.setOpacity(post.free || count > 0 ? 1.0 : 0.35);
        drawPlace(p, QPointF(x + 10, area.center().y() + (kind <= Kind::Rotary ? 1 : 0)), kind, post.free);
        p.setPen(kInk);
        const double textWidth = metrics.horizontalAdvance(texts[i]);
        p.drawText(QRectF(x + kIcon, area.top(), textWidth + 2, area.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   texts[i]);
        x += kIcon + textWidth + gap;
    }
    p.setOpacity(1.0);
}

QImage postPicture(const Post& post, const QString& caption, const PictureWords& words)
{
    constexpr int kWidth = 320;
    constexpr int kHeight = 200;
    QImage image(kWidth, kHeight, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);

    drawSpindles(p, kWidth, 24, words);

    const QFontMetrics metrics(font(11, true));
    constexpr int kGap = 6;
    QList<int> widths;
    int total = -kGap;
    for (const Block& block : post.blocks) {
        widths.append(blockWidth(block, metrics));
        total += widths.last() + kGap;
    }
    if (total > kWidth - 12)
        qFatal("the post of \"%s\" is %d px wide", qPrintable(caption), total);
    double x = (kWidth - total) / 2.0;
    const QRectF band(0, 46, kWidth, kHeader + 2 + 2 * kRowHeight + 8);
    for (qsizetype i = 0; i < post.blocks.size(); ++i) {
        drawBlock(p, QRectF(x, band.top(), widths[i], band.height()), post.blocks[i], post.free);
        x += widths[i] + kGap;
    }
    if (!caption.isEmpty()) {
        p.setFont(font(11, true));
        p.setPen(kInk);
        p.drawText(QRectF(0, band.bottom() + 2, kWidth, 16), Qt::AlignCenter, caption);
    }
    drawLegend(p, post, QRectF(4, kHeight - 30, kWidth - 8, 24), words);
    return image;
}

// ---- the stock pictures --------------------------------------------------------

void arrowHead(QPainter& p, QPointF tip, QPointF from)
{
    const QLineF line(tip, from);
    const double angle = std::atan2(-line.dy(), line.dx());
    const double spread = std::numbers::pi / 9;
    const QPointF a = tip + QPointF(std::cos(angle + spread), -std::sin(angle + spread)) * 8;
    const QPointF b = tip + QPointF(std::cos(angle - spread), -std::sin(angle - spread)) * 8;
    p.drawPolygon(QPolygonF{tip, a, b});
}

// A regular hexagon (corners left and right) with its circumscribed and its
// inscribed circle; the one the stock diameter means is drawn bold and its
// diameter dimensioned: across the corners for the outer, across the flats
// for the inner.
QImage circlePicture(bool outer)
{
    constexpr int kSize = 120;
    QImage image(kSize, kSize, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QPointF c(kSize / 2.0, kSize / 2.0);
    const double R = 50;
    const double r = R * std::cos(std::numbers::pi / 6);
    const QColor accent(0xd3, 0x2f, 0x2f);

    QPolygonF hexagon;
    for (int i = 0; i < 6; ++i) {
        const double a = i * std::numbers::pi / 3;
        hexagon << c + QPointF(R * std::cos(a), R * std::sin(a));
    }
    p.setBrush(QColor(0xec, 0xef, 0xf1));
    p.setPen(QPen(kInk, 1.5));
    p.drawPolygon(hexagon);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(kFree, 1, Qt::DashLine));
    p.drawEllipse(c, outer ? r : R, outer ? r : R);
    p.setPen(QPen(accent, 2.5));
    p.drawEllipse(c, outer ? R : r, outer ? R : r);

    // the diameter: a line through the centre with an arrow at each end
    const double d = outer ? R : r;
    const QPointF from = outer ? c - QPointF(d, 0) : c - QPointF(0, d);
    const QPointF to = outer ? c + QPointF(d, 0) : c + QPointF(0, d);
    p.setPen(QPen(accent, 1.2));
    p.setBrush(accent);
    p.drawLine(from, to);
    arrowHead(p, from, to);
    arrowHead(p, to, from);

    const QString label = outer ? QStringLiteral("OD") : QStringLiteral("ID");
    p.setFont(font(12, true));
    const QRectF text = outer ? QRectF(c.x() - 17, c.y() - 19, 34, 16) : QRectF(c.x() + 3, c.y() - 8, 32, 16);
    p.setPen(accent);
    p.drawText(text, Qt::AlignCenter, QStringLiteral("\u00d8") + label);
    return image;
}

// The pick button: an arrow pointing at a contour.
QImage selectionPicture()
{
    constexpr int kSize = 20;
    QImage image(kSize, kSize, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath contour;
    contour.moveTo(0, 4);
    contour.lineTo(7, 4);
    contour.cubicTo(12, 4, 13, 11, 20, 11);
    p.setPen(QPen(kRotary, 2));
    p.drawPath(contour);
    const QPolygonF arrow{{0, 0}, {0, 13}, {3, 10}, {5.5, 15}, {7.5, 14}, {5, 9}, {9, 9}};
    p.translate(6.5, 4.5);
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::white);
    p.drawPolygon(arrow);
    return image;
}

void save(const QImage& image, const QDir& folder, const QString& name)
{
    const QString path = folder.filePath(name);
    if (!image.save(path, "PNG"))
        qFatal("cannot write %s", qPrintable(path));
    QTextStream(stdout) << path << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        QTextStream(stderr) << "usage: datapage-pictures <folder>\n";
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral(".")))
        qFatal("cannot create %s", argv[1]);

    GangToolPatternTable table;
    marelon::LoadL5Patterns(table);
    for (const GangToolPattern& pattern : table) {
        const bool free = pattern.code == 48 || pattern.code == 49;
        const Post post = free ? freePost() : postOf(pattern, table);
        for (const PictureWords& words : kPictureLanguages) {
            const QString caption = free ? words.freeTool.arg(pattern.code - 47) : QString();
            save(postPicture(post, caption, words), folder,
                 QStringLiteral("L5-16-20-%1%2.png").arg(words.fileInfix).arg(pattern.code));
        }
    }
    save(circlePicture(true), folder, QStringLiteral("ODcircle.png"));
    save(circlePicture(false), folder, QStringLiteral("IDcircle.png"));
    save(selectionPicture(), folder, QStringLiteral("SELECTION.png"));
    return 0;
}
