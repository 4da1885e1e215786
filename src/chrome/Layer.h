// A retained tree of decoration, painted by QPainter: plates, pictures, shadows, borders, each with
// animations by key. Space: points, y up, the origin at the bottom left of the superlayer. Setting a property
// changes it at once; only an animation moves it, from a presented value to another. Owned by its superlayer,
// the root by a LayerHost. Main thread.
#pragma once

#include "chrome/Animation.h"
#include "chrome/LayerContents.h"
#include "chrome/Paths.h"
#include "chrome/ShadowMask.h"

#include <QString>
#include <memory>
#include <vector>

namespace marrowfin::chrome {

class LayerHost;

struct Shadow {
    QColor color = Qt::black;
    double opacity = 0;
    double radius = 3; // a Gaussian's sigma
    QPointF offset;
    QPainterPath path; // in the layer's bounds; there is no shadow without one
    // A part of the bounds where nobody will see the shadow: it isn't painted there.
    QRectF hidden;
};

struct Border {
    double width = 0;
    QColor color = Qt::black;
};

class Layer {
public:
    Layer() = default;
    virtual ~Layer() = default;
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;

    // A new sublayer in front of the others.
    template <class T = Layer>
    T& add() {
        auto layer = std::make_unique<T>();
        T& result = *layer;
        adopt(std::move(layer));
        return result;
    }
    // Its alpha decides what of this layer and its sublayers is seen. In this layer's bounds.
    template <class T = Layer>
    T& makeMask() {
        auto layer = std::make_unique<T>();
        T& result = *layer;
        adoptMask(std::move(layer));
        return result;
    }

    // Within this part of the bounds the mask leaves nothing: nothing is painted there.
    void setMaskHole(const QRectF& hole);

    // Without the transform.
    QRectF frame() const;
    void setFrame(const QRectF& frame);
    QRectF bounds() const { return {QPointF(0, 0), size}; }
    // The point of the bounds, in parts of the size, that the transform turns about. The frame stays.
    void setAnchorPoint(const QPointF& anchor);
    QPointF anchorPoint() const { return anchor; }

    // Opacity, transform, background, shadow opacity and radius, stroke end: what is animated.
    Value value(Property property) const;
    void setValue(Property property, const Value& value);
    // What is on the screen now.
    Value presented(Property property) const;
    double opacity() const { return std::get<double>(value(Property::Opacity)); }
    QTransform transform() const { return std::get<QTransform>(value(Property::Transform)); }

    void setContents(const QImage& image);
    QImage contents() const { return picture.image(); }
    void setCornerRadius(double radius, CornerCurve curve = CornerCurve::Circular);
    double cornerRadius() const { return radius; }
    void setMasksToBounds(bool masks);
    void setBorder(const Border& border);
    const Border& border() const { return edge; }
    void setShadow(const Shadow& shadow);
    const Shadow& shadow() const { return cast; }
    const ShadowMask& shadowMask() const { return castMask; }

    // Replaces one of the same key. It leaves by itself when it is over.
    void addAnimation(const QString& key, Animation animation);
    void removeAnimation(const QString& key);
    // Null when none of this key is there (or it is over).
    const Animation* animation(const QString& key) const;

    // From this layer's bounds to its superlayer's, as presented at this time.
    QTransform toSuperlayer(double now) const;
    QTransform toRoot(double now) const;

protected:
    struct Moment {
        double now;
        double density;    // device pixels per point
        QRectF deviceClip; // nothing outside is wanted
        // On a picture of its own of this part of the device.
        Moment aside(const QRect& device) const { return {now, density, QRectF({0, 0}, device.size())}; }
    };
    // Between the contents and the sublayers, in the bounds.
    virtual void paintOwn(QPainter&, const Moment&) const {}
    // What paintOwn covers.
    virtual QRectF ownExtent(double /*now*/) const { return bounds(); }
    // When this animation next changes a pixel.
    virtual double nextChange(const Animation& animation, double now, double density) const;
    // What has to be painted again between the two times while this animation runs alone; nothing means all
    // of the layer.
    virtual std::optional<QRectF> damage(const Animation&, double /*before*/, double /*now*/) const {
        return std::nullopt;
    }
    Value presentedAt(Property property, double now) const;
    double presentedNumber(Property property, double now) const {
        return std::get<double>(presentedAt(property, now));
    }
    // The layer has changed: it is painted again where it was and where it is.
    void changed();

private:
    friend class LayerHost;
    friend class LayerPainter;

    struct Running {
        QString key;
        Animation animation;
    };
    void adopt(std::unique_ptr<Layer> layer);
    void adoptMask(std::unique_ptr<Layer> layer);
    LayerHost* host() const;
    // Of this layer and all in it, in its bounds, as presented; empty when it is invisible.
    QRectF extent(double now) const;
    QRectF shadowExtent(double now) const;

    Layer* superlayer = nullptr;
    LayerHost* rootHost = nullptr;
    std::vector<std::unique_ptr<Layer>> sublayers;
    std::unique_ptr<Layer> mask;
    QRectF maskHole;

    QPointF position; // of the anchor point, in the superlayer
    QPointF anchor{0.5, 0.5};
    QSizeF size;
    double modelOpacity = 1;
    QTransform modelTransform;
    QColor background = Qt::transparent;
    double modelStrokeEnd = 1;
    double radius = 0;
    CornerCurve cornerCurve = CornerCurve::Circular;
    bool clips = false;
    Border edge;
    Shadow cast;
    mutable ShadowMask castMask;
    mutable LayerContents picture;
    std::vector<Running> animations;
    QRectF shown;       // where it was painted last, in the root
    double shownAt = 0; // as of this time
};

} // namespace marrowfin::chrome
