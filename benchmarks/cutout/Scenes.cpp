#include "cutout/Scenes.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace quillary::benchmark::Scenes {

namespace {

using Color = std::array<float, 3>;

/// A random source with the shapes of randomness that scenes need.
class Dice {
public:
    explicit Dice(unsigned seed) : m_engine(seed) {}
    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(m_engine); }
    int upTo(int count) { return static_cast<int>(m_engine() % static_cast<unsigned>(count)); }
    unsigned seed() { return static_cast<unsigned>(m_engine()); }
    float grain(float deviation) { return std::normal_distribution<float>(0, deviation)(m_engine); }
    Color color() {
        const QColor color = QColor::fromHsvF(between(0, 1), between(0.15F, 0.85F), between(0.25F, 0.95F));
        return {static_cast<float>(color.red()), static_cast<float>(color.green()), static_cast<float>(color.blue())};
    }

private:
    std::mt19937 m_engine;
};

struct Field {
    int width;
    int height;
    std::vector<Color> pixels;

    Field(int w, int h) : width(w), height(h), pixels(static_cast<std::size_t>(w) * h) {}
    Color& at(int x, int y) { return pixels[static_cast<std::size_t>(y) * width + x]; }
};

float distance(const Color& a, const Color& b) {
    float sum = 0;
    for (std::size_t c = 0; c < 3; ++c) sum += (a[c] - b[c]) * (a[c] - b[c]);
    return std::sqrt(sum);
}

Color mixed(const Color& a, const Color& b, float share) {
    Color result;
    for (std::size_t c = 0; c < 3; ++c) result[c] = std::lerp(a[c], b[c], share);
    return result;
}

/// Noise with structure at all scales from `cells` lattice cells across, mean 0, roughly -1 … 1.
std::vector<float> noise(int width, int height, int cells, float persistence, Dice& dice) {
    std::vector<float> sum(static_cast<std::size_t>(width) * height, 0.0F);
    float weight = 1;
    float total = 0;
    const int longer = std::max(width, height);
    for (; cells < longer / 2; cells *= 2, weight *= persistence) {
        const int points = cells + 2;
        std::vector<float> lattice(static_cast<std::size_t>(points) * points);
        for (float& value : lattice) value = dice.between(-1, 1);
        const float step = static_cast<float>(cells) / static_cast<float>(longer);
        for (int y = 0; y < height; ++y) {
            const float v = static_cast<float>(y) * step;
            const auto j = static_cast<std::size_t>(v);
            const float b = v - static_cast<float>(j);
            for (int x = 0; x < width; ++x) {
                const float u = static_cast<float>(x) * step;
                const auto i = static_cast<std::size_t>(u);
                const float a = u - static_cast<float>(i);
                const float* upper = &lattice[j * points + i];
                const float* lower = upper + points;
                sum[static_cast<std::size_t>(y) * width + x] +=
                    weight * std::lerp(std::lerp(upper[0], upper[1], a), std::lerp(lower[0], lower[1], a), b);
            }
        }
        total += weight * 0.5F;
    }
    for (float& value : sum) value /= std::max(total, 1e-3F);
    return sum;
}

void paintGradient(Field& field, const Color& a, const Color& b, float angle) {
    const float dx = std::cos(angle) / static_cast<float>(field.width);
    const float dy = std::sin(angle) / static_cast<float>(field.height);
    for (int y = 0; y < field.height; ++y)
        for (int x = 0; x < field.width; ++x)
            field.at(x, y) = mixed(
                a, b, std::clamp(0.5F + (static_cast<float>(x) * dx + static_cast<float>(y) * dy) * 0.5F, 0.0F, 1.0F));
}

void paintTexture(Field& field, const Color& a, const Color& b, int cells, float persistence, Dice& dice) {
    const auto values = noise(field.width, field.height, cells, persistence, dice);
    for (std::size_t i = 0; i < values.size(); ++i)
        field.pixels[i] = mixed(a, b, std::clamp(0.5F + values[i], 0.0F, 1.0F));
}

QImage toImage(const Field& field) {
    QImage image(field.width, field.height, QImage::Format_RGBX8888);
    for (int y = 0; y < field.height; ++y) {
        uchar* row = image.scanLine(y);
        for (int x = 0; x < field.width; ++x) {
            for (std::size_t c = 0; c < 3; ++c)
                row[x * 4 + static_cast<int>(c)] = static_cast<uchar>(
                    std::clamp(field.pixels[static_cast<std::size_t>(y) * field.width + x][c], 0.0F, 255.0F));
            row[x * 4 + 3] = 255;
        }
    }
    return image;
}

void fromImage(Field& field, const QImage& image) {
    for (int y = 0; y < field.height; ++y) {
        const uchar* row = image.constScanLine(y);
        for (int x = 0; x < field.width; ++x)
            for (std::size_t c = 0; c < 3; ++c) field.at(x, y)[c] = row[x * 4 + static_cast<int>(c)];
    }
}

QColor toColor(const Color& color) {
    return QColor(static_cast<int>(color[0]), static_cast<int>(color[1]), static_cast<int>(color[2]));
}

/// Things of many colours and sizes all over the picture.
void paintClutter(Field& field, int things, Dice& dice) {
    QImage image = toImage(field);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto longer = static_cast<float>(std::max(field.width, field.height));
    for (int i = 0; i < things; ++i) {
        painter.save();
        painter.translate(dice.between(0, static_cast<float>(field.width)),
                          dice.between(0, static_cast<float>(field.height)));
        painter.rotate(dice.between(0, 180));
        painter.setBrush(toColor(dice.color()));
        const float w = longer * dice.between(0.02F, 0.12F);
        const float h = longer * dice.between(0.02F, 0.12F);
        const QRectF box(-w / 2, -h / 2, w, h);
        if (dice.upTo(2) == 0)
            painter.drawRect(box);
        else
            painter.drawEllipse(box);
        painter.restore();
    }
    painter.end();
    fromImage(field, image);
}

/// Three passes of a running mean, close to a Gaussian of the given radius.
void blur(Field& field, int radius) {
    const auto along = [&](int count, int length, auto index) {
        std::vector<Color> line(static_cast<std::size_t>(length));
        for (int i = 0; i < count; ++i) {
            for (int pass = 0; pass < 3; ++pass) {
                for (int j = 0; j < length; ++j) line[static_cast<std::size_t>(j)] = field.pixels[index(i, j)];
                Color sum{};
                const auto at = [&](int j) -> const Color& {
                    return line[static_cast<std::size_t>(std::clamp(j, 0, length - 1))];
                };
                for (std::size_t c = 0; c < 3; ++c)
                    for (int j = -radius; j <= radius; ++j) sum[c] += at(j)[c];
                for (int j = 0; j < length; ++j) {
                    for (std::size_t c = 0; c < 3; ++c) {
                        field.pixels[index(i, j)][c] = sum[c] / static_cast<float>(2 * radius + 1);
                        sum[c] += at(j + radius + 1)[c] - at(j - radius)[c];
                    }
                }
            }
        }
    };
    const auto width = static_cast<std::size_t>(field.width);
    along(field.height, field.width, [&](int i, int j) { return static_cast<std::size_t>(i) * width + j; });
    along(field.width, field.height, [&](int i, int j) { return static_cast<std::size_t>(j) * width + i; });
}

QPainterPath blob(QPointF centre, float radius, float roughness, Dice& dice) {
    std::array<float, 6> amplitude;
    std::array<float, 6> phase;
    for (std::size_t k = 0; k < amplitude.size(); ++k) {
        amplitude[k] = roughness * dice.between(0, 1) / static_cast<float>(k + 1);
        phase[k] = dice.between(0, 6.28F);
    }
    const float squeeze = dice.between(0.65F, 1.0F);
    QPainterPath path;
    constexpr int points = 180;
    for (int i = 0; i < points; ++i) {
        const float angle = static_cast<float>(i) * 6.2831853F / points;
        float r = radius;
        for (std::size_t k = 0; k < amplitude.size(); ++k)
            r += radius * amplitude[k] * std::sin(static_cast<float>(k + 2) * angle + phase[k]);
        const QPointF point = centre + QPointF(r * squeeze * std::cos(angle), r * std::sin(angle));
        if (i == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    path.closeSubpath();
    return path;
}

/// Head and shoulders, cut off by the lower border.
QPainterPath bust(int width, int height, Dice& dice) {
    const float x = static_cast<float>(width) * dice.between(0.38F, 0.62F);
    const float unit = static_cast<float>(height) * dice.between(0.14F, 0.2F);
    const float top = static_cast<float>(height) * dice.between(0.15F, 0.3F);
    QPainterPath path;
    path.addEllipse(QPointF(x, top + unit), unit * 0.8, unit);
    QPainterPath neck;
    neck.addRect(x - unit * 0.35, top + unit * 1.6, unit * 0.7, unit);
    QPainterPath shoulders;
    shoulders.addRoundedRect(QRectF(x - unit * 1.8, top + unit * 2.3, unit * 3.6, height), unit, unit);
    return path.united(neck).united(shoulders);
}

QPainterPath shapeOf(const std::string& kind, int width, int height, Dice& dice) {
    const float shorter = static_cast<float>(std::min(width, height));
    const QPointF middle(static_cast<float>(width) * dice.between(0.4F, 0.6F),
                         static_cast<float>(height) * dice.between(0.42F, 0.58F));
    if (kind == "touching the border") return bust(width, height, dice);
    if (kind == "holes") {
        const float radius = shorter * dice.between(0.27F, 0.34F);
        const QPainterPath outer = blob(middle, radius, 0.12F, dice);
        QPainterPath hole;
        hole.addEllipse(middle, radius * dice.between(0.35F, 0.5F), radius * dice.between(0.35F, 0.5F));
        return outer.subtracted(hole);
    }
    if (kind == "two subjects") {
        const float third = static_cast<float>(width) / 3.2F;
        const QPointF left(third * dice.between(0.85F, 1.0F), middle.y());
        const QPointF right(static_cast<float>(width) - third * dice.between(0.85F, 1.0F), middle.y());
        return blob(left, shorter * 0.19F, 0.25F, dice).united(blob(right, shorter * 0.16F, 0.25F, dice));
    }
    QPainterPath path = blob(middle, shorter * dice.between(0.18F, 0.32F), 0.3F, dice);
    if (dice.upTo(2) == 0) { // limbs
        QPainterPathStroker stroker(QPen(Qt::black, shorter * dice.between(0.03F, 0.07F)));
        stroker.setCapStyle(Qt::RoundCap);
        for (int i = 0; i < 3; ++i) {
            QPainterPath limb(middle);
            limb.quadTo(middle + QPointF(dice.between(-0.3F, 0.3F), dice.between(-0.3F, 0.3F)) * shorter,
                        middle + QPointF(dice.between(-0.38F, 0.38F), dice.between(-0.38F, 0.38F)) * shorter);
            path = path.united(stroker.createStroke(limb));
        }
    }
    return path;
}

std::vector<float> coverageOf(const QPainterPath& path, int width, int height, int softness) {
    QImage drawn(width, height, QImage::Format_RGBX8888);
    drawn.fill(Qt::black);
    QPainter painter(&drawn);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, Qt::white);
    painter.end();
    Field field(width, height);
    fromImage(field, drawn);
    if (softness > 0) blur(field, softness);
    std::vector<float> coverage;
    coverage.reserve(field.pixels.size());
    for (const Color& pixel : field.pixels) coverage.push_back(pixel[0] / 255);
    return coverage;
}

void paintBackground(Field& field, const std::string& kind, const Color& a, const Color& b, Dice& dice) {
    paintGradient(field, a, mixed(a, b, 0.5F), dice.between(0, 6.28F));
    if (kind == "textured background" || kind == "texture")
        paintTexture(field, a, b, 8, 0.95F, dice);
    else if (kind == "noise")
        paintTexture(field, a, b, 128, 1.0F, dice);
    else if (kind == "blurred background" || kind == "touching the border" || kind == "two subjects" ||
             kind == "blurred things") {
        paintClutter(field, 40, dice);
        blur(field, std::max(field.width, field.height) / 24);
    } else if (kind == "cluttered background" || kind == "clutter")
        paintClutter(field, 160, dice);
    else if (kind == "similar colours" || kind == "soft edges" || kind == "holes")
        paintTexture(field, a, mixed(a, b, 0.6F), 3, 0.5F, dice);
    else if (kind == "bands") {
        // Sky, hills and ground.
        const auto ridge = noise(field.width, 1, 3, 0.5F, dice);
        const Color ground = dice.color();
        for (int y = 0; y < field.height; ++y)
            for (int x = 0; x < field.width; ++x) {
                const float line =
                    static_cast<float>(field.height) * (0.45F + 0.12F * ridge[static_cast<std::size_t>(x)]);
                if (static_cast<float>(y) > line) field.at(x, y) = b;
                if (static_cast<float>(y) > line * 1.6F) field.at(x, y) = ground;
            }
    } else if (kind == "flat")
        std::fill(field.pixels.begin(), field.pixels.end(), a);
}

} // namespace

const std::vector<Class>& classes() {
    static const std::vector<Class> all{{"plain background", true},
                                        {"textured background", true},
                                        {"blurred background", true},
                                        {"cluttered background", true},
                                        {"soft edges", true},
                                        {"holes", true},
                                        {"touching the border", true},
                                        {"similar colours", true},
                                        {"two subjects", true},
                                        {"flat", false},
                                        {"gradient", false},
                                        {"texture", false},
                                        {"noise", false},
                                        {"bands", false},
                                        {"blurred things", false},
                                        {"clutter", false}};
    return all;
}

Scene make(const Class& kind, int number, int side) {
    const auto position =
        std::find_if(classes().begin(), classes().end(), [&](const Class& c) { return c.name == kind.name; });
    Dice dice(static_cast<unsigned>(position - classes().begin()) * 1000 + static_cast<unsigned>(number));
    const bool upright = number % 3 == 2;
    const int shorter = side * 3 / 4;
    Field field(upright ? shorter : side, upright ? side : shorter);

    const Color a = dice.color();
    Color b = dice.color();
    paintBackground(field, kind.name, a, b, dice);

    QImage mask(field.width, field.height, QImage::Format_Grayscale8);
    mask.fill(0);
    if (kind.hasSubject) {
        // A subject may share hues with its background, but not all of its colours.
        const bool similar = kind.name == "similar colours";
        Color c = dice.color();
        const float least = similar ? 30 : 100;
        const float most = similar ? 55 : 500;
        while (std::min(distance(c, a), distance(c, b)) < least || std::min(distance(c, a), distance(c, b)) > most)
            c = dice.color();
        Field skin(field.width, field.height);
        paintTexture(skin, c, mixed(c, dice.color(), similar ? 0.15F : 0.45F), 6, 0.75F, dice);
        const auto coverage = coverageOf(shapeOf(kind.name, field.width, field.height, dice), field.width, field.height,
                                         kind.name == "soft edges" ? side / 240 : 0);
        const float light = dice.between(-0.35F, 0.35F);
        for (int y = 0; y < field.height; ++y)
            for (int x = 0; x < field.width; ++x) {
                const std::size_t i = static_cast<std::size_t>(y) * field.width + x;
                const float shade = 1 + light * (static_cast<float>(x) / static_cast<float>(field.width) - 0.5F) * 2;
                Color lit = skin.pixels[i];
                for (float& channel : lit) channel *= shade;
                field.pixels[i] = mixed(field.pixels[i], lit, coverage[i]);
                mask.scanLine(y)[x] = static_cast<uchar>(std::lround(coverage[i] * 255));
            }
    }
    for (Color& pixel : field.pixels) {
        const float grain = dice.grain(2.5F);
        for (float& channel : pixel) channel += grain;
    }
    return {toImage(field), mask};
}

} // namespace quillary::benchmark::Scenes
