#include "picture.h"

#include "scale.h"
#include "terminal.h"

#include <QHash>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

constexpr double width = 1200, margin = 30, headRoom = 60, axisRoom = 70;
constexpr double letterWidth = 6.2, fontSize = 11, gap = 3, leastBar = 2;
constexpr double lanesRoom = 640, thinnestLane = 1, fullLane = 20, tallestBar = 12;
constexpr int mostLabelledLanes = 32;

const char* const colours[] = {"#0072b2", "#e69f00", "#009e73", "#cc79a7", "#56b4e9", "#d55e00", "#8c6d31", "#882255"};
const char *const otherColour = "#9a9a9a", *const dark = "#222222", *const white = "#ffffff";

using Style = QVector<std::pair<const char*, const char*>>;
const Style atStart{{"text-anchor", "start"}, {"font-size", "11.0"}};
const Style atEnd{{"text-anchor", "end"}, {"font-size", "11.0"}};
const Style centred{{"text-anchor", "middle"}, {"font-size", "11.0"}};
const Style heading{{"text-anchor", "start"}, {"font-size", "16.0"}};
/// With a dark seam, to be read on any colour.
const Style onColour{
    {"font-size", "11.0"}, {"fill", white}, {"stroke", dark}, {"stroke-width", "1.2"}, {"paint-order", "stroke"}};

enum class Side { None, Left, Right, Within };

struct Placed
{
    const Bar* bar;
    double left, right;
    int lane;
    Side label;
};

double labelWidth(const Placed& placed) { return letterWidth * placed.bar->label.size() + 2 * gap; }

constexpr double plotWidth = width - 2 * margin;

/// Gives each bar the lowest lane where it meets none, with its label or without; tells how many lanes there are.
int stack(QVector<Placed>& bars, bool areLabelled)
{
    QVector<double> ends;
    for (Placed& placed : bars) {
        const double label = areLabelled ? labelWidth(placed) : 0;
        const bool isLabelAhead = placed.right + label > plotWidth;
        const double begin = placed.left - (isLabelAhead ? label : 0);
        const auto free = std::find_if(ends.begin(), ends.end(), [&](double end) { return end + gap <= begin; });
        placed.lane = int(free - ends.begin());
        if (free == ends.end())
            ends += 0;
        ends[placed.lane] = placed.right + (isLabelAhead ? 0 : label);
    }
    return ends.size();
}

/// Labels the bars beside which their lane is free for long enough, to the right if possible, and the long ones within.
void labelWhereThereIsRoom(QVector<Placed>& bars, int lanes)
{
    QVector<double> next(lanes, plotWidth), last(lanes, 0);
    for (auto placed = bars.rbegin(); placed != bars.rend(); ++placed) {
        const bool hasRoom = placed->right + labelWidth(*placed) <= next[placed->lane];
        placed->label = hasRoom ? Side::Right : Side::None;
        next[placed->lane] = placed->left;
    }
    for (Placed& placed : bars) {
        double& end = last[placed.lane];
        if (placed.label == Side::None && placed.left - labelWidth(placed) >= end)
            placed.label = Side::Left;
        else if (placed.label == Side::None && placed.right - placed.left >= labelWidth(placed))
            placed.label = Side::Within;
        end = placed.right + (placed.label == Side::Right ? labelWidth(placed) : 0);
    }
}

class Drawing
{
public:
    Drawing(const QVector<Bar>& bars, const QString& title, const QString& remark)
        : m_scale(edgesOf(bars), plotWidth), m_svg(&m_text)
    {
        place(bars);
        group(bars);
        m_bottom = headRoom + m_lanes * m_laneHeight + gap;
        m_svg.writeStartDocument();
        open(title, remark);
        drawAxis();
        for (const Placed& placed : qAsConst(m_placed))
            draw(placed);
        drawLegend();
        m_svg.writeEndDocument();
    }

    QByteArray bytes() const { return m_text.toUtf8(); }

private:
    static QVector<double> edgesOf(const QVector<Bar>& bars)
    {
        QVector<double> edges;
        for (const Bar& bar : bars)
            edges << bar.from << bar.to;
        return edges;
    }

    void place(const QVector<Bar>& bars)
    {
        for (const Bar& bar : bars) {
            const double left = m_scale.place(bar.from);
            m_placed += {&bar, left, qMax(m_scale.place(bar.to), left + leastBar), 0, Side::None};
        }
        std::stable_sort(m_placed.begin(), m_placed.end(),
                         [](const Placed& a, const Placed& b) { return a.left < b.left; });
        m_lanes = stack(m_placed, true);
        if (m_lanes > mostLabelledLanes)
            m_lanes = stack(m_placed, false);
        m_laneHeight = qBound(thinnestLane, lanesRoom / m_lanes, fullLane);
        labelWhereThereIsRoom(m_placed, m_lanes);
    }

    void group(const QVector<Bar>& bars)
    {
        QHash<QString, int> counts;
        for (const Bar& bar : bars)
            ++counts[bar.group];
        m_groups = counts.keys();
        std::sort(m_groups.begin(), m_groups.end(), [&](const QString& a, const QString& b) {
            return counts[a] != counts[b] ? counts[a] > counts[b] : a < b;
        });
        m_groups = m_groups.mid(0, int(std::size(colours)));
        m_hasOthers = counts.size() > m_groups.size();
    }
    const char* colourOf(const QString& group) const
    {
        const int place = m_groups.indexOf(group);
        return place < 0 ? otherColour : colours[place];
    }

    void start(const char* element, std::initializer_list<std::pair<const char*, double>> numbers, const Style& style)
    {
        m_svg.writeStartElement(element);
        for (const auto& [name, number] : numbers)
            m_svg.writeAttribute(name, QString::number(number, 'f', 1));
        for (const auto& [name, text] : style)
            m_svg.writeAttribute(name, text);
    }
    void line(double x1, double y1, double x2, double y2, const char* colour)
    {
        start("line", {{"x1", x1}, {"y1", y1}, {"x2", x2}, {"y2", y2}}, {{"stroke", colour}});
        m_svg.writeEndElement();
    }
    /// The title is what a viewer tells under the pointer.
    void box(double x, double y, double w, double h, const char* colour, const QString& title = {})
    {
        start("rect", {{"x", x}, {"y", y}, {"width", w}, {"height", h}}, {{"fill", colour}});
        if (!title.isNull())
            m_svg.writeTextElement("title", title);
        m_svg.writeEndElement();
    }
    void text(double x, double y, const QString& content, const Style& style)
    {
        start("text", {{"x", x}, {"y", y}}, style);
        m_svg.writeCharacters(content);
        m_svg.writeEndElement();
    }

    void open(const QString& title, const QString& remark)
    {
        const double height = m_bottom + axisRoom;
        m_svg.writeDefaultNamespace("http://www.w3.org/2000/svg");
        start("svg", {{"width", width}, {"height", height}}, {});
        m_svg.writeAttribute("viewBox", QString("0 0 %1 %2").arg(width, 0, 'f', 1).arg(height, 0, 'f', 1));
        m_svg.writeAttribute("font-family", "sans-serif");
        m_svg.writeAttribute("fill", dark);
        box(0, 0, width, height, white);
        text(margin, 28, title, heading);
        text(width - margin, 28, remark, atEnd);
    }

    void drawAxis()
    {
        line(margin, m_bottom, width - margin, m_bottom, dark);
        for (const auto& [place, label] : m_scale.ticks()) {
            line(margin + place, headRoom - 10, margin + place, m_bottom + 5, "#dddddd");
            text(margin + place, m_bottom + 18, label, centred);
        }
    }

    void draw(const Placed& placed)
    {
        const double height = qMin(m_laneHeight * 0.8, tallestBar);
        const double y = m_bottom - (placed.lane + 1) * m_laneHeight, baseline = y + height - 2;
        const Bar& bar = *placed.bar;
        box(margin + placed.left, y, placed.right - placed.left, height, colourOf(bar.group),
            QString("%1 (%2)").arg(bar.label, bar.group));
        if (m_laneHeight < fontSize)
            return;
        if (placed.label == Side::Right)
            text(margin + placed.right + gap, baseline, bar.label, atStart);
        else if (placed.label == Side::Left)
            text(margin + placed.left - gap, baseline, bar.label, atEnd);
        else if (placed.label == Side::Within)
            text(margin + placed.left + gap, baseline, bar.label, onColour);
    }

    void drawLegend()
    {
        constexpr int letters = 16;
        constexpr double step = plotWidth / (std::size(colours) + 1);
        double x = margin;
        const auto add = [&](const QString& name, const char* colour) {
            box(x, m_bottom + 40, 12, 12, colour);
            text(x + 16, m_bottom + 50, shortened(name, letters), atStart);
            x += step;
        };
        for (const QString& group : qAsConst(m_groups))
            add(group, colourOf(group));
        if (m_hasOthers)
            add("others", otherColour);
    }

    Scale m_scale;
    QVector<Placed> m_placed;
    QStringList m_groups;
    bool m_hasOthers = false;
    int m_lanes = 0;
    double m_laneHeight = 0;
    double m_bottom = 0;
    QString m_text;
    QXmlStreamWriter m_svg;
};

} // namespace

QByteArray pictureOf(const QVector<Bar>& bars, const QString& title, const QString& remark)
{
    return Drawing(bars, title, remark).bytes();
}
