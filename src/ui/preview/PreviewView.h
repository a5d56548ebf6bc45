// The drawing surface of the 3D preview: the skinned triangles with their
// textures and render modes, the skeleton as lines, the markers, and a
// camera that the mouse turns, moves and zooms. It draws what it is handed;
// FrmPreview works out what that is from the document.
#pragma once

#include "preview/ModelPose.h"

#include <QMatrix4x4>
#include <QImage>
#include <QWidget>
#include <QPoint>
#include <QPointF>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace quarle::ui {

// The texture of one batch: its pixels (nothing: drawn as a checker) and its
// render mode (0 normal, 1 masked, 2 additive).
struct PreviewTexture {
    std::optional<preview::TextureImage> Image;
    int Mode = 0;
};

// What one frame shows besides the triangles, in model space.
struct PreviewMarkers {
    struct Line {
        preview::Vec3 From;
        preview::Vec3 To;
    };
    std::vector<Line> Bones;
    // A second skeleton laid over the first (the compiled model's), drawn
    // in a colour of its own.
    std::vector<Line> Compiled;
    struct Attachment {
        int Number = 0;
        preview::Vec3 Point;
    };
    std::vector<Attachment> Attachments;
    std::optional<preview::Vec3> Eye;
    // The controller's bone, its axis (unit length) and its limits as an
    // arc of points about the axis.
    struct Controller {
        preview::Vec3 Origin;
        preview::Vec3 Axis;
        std::vector<preview::Vec3> Arc;
    };
    std::optional<Controller> Control;
};

class PreviewLabels;
class PreviewSurface;

// The view keeps the scene and the camera; the GL surface inside it, made
// only where a GL context can be had, draws them. Without one the view
// stays empty and says so through GlAvailable.
class PreviewView : public QWidget {
    Q_OBJECT

public:
    explicit PreviewView(QWidget* parent = nullptr);
    ~PreviewView() override;

    // A new mesh: the UVs and batches of mesh, one texture per batch, and
    // the bounds the camera frames. The corners come with each SetPose.
    void SetMesh(const preview::Mesh& mesh, std::vector<PreviewTexture> textures);
    // No mesh: only the background is drawn.
    void ClearMesh();
    // The corners of the mesh in this frame (as SkinMesh gives them) and the
    // markers.
    void SetPose(std::vector<preview::Vec3> positions, std::vector<preview::Vec3> normals,
                 PreviewMarkers markers);

    // Turns the camera to its start and moves it so that what is shown (the
    // corners in their current pose, else the bones) is centred and fills
    // most of the view.
    void FrameModel();
    // The corners of the mesh in the pose shown.
    const std::vector<preview::Vec3>& Corners() const { return positions_; }

    // Where a point of the model shows in the view (logical pixels), or
    // nothing for a point behind the camera.
    std::optional<QPointF> Project(const preview::Vec3& point) const;
    const PreviewMarkers& Markers() const { return markers_; }

    // Whether the view can draw: nothing while its GL surface has not been
    // shown yet, false where no GL context could be made.
    std::optional<bool> GlAvailable() const;
    // The picture drawn last (empty without GL).
    QImage Grab();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class PreviewSurface;
    QMatrix4x4 ViewProjection() const;
    QVector3D Eye() const;
    void Redraw();

    PreviewSurface* surface_ = nullptr;
    PreviewLabels* labels_ = nullptr;

    // The scene.
    std::vector<int> batchFirst_;
    std::vector<int> batchCount_;
    std::vector<float> uvs_;
    std::vector<PreviewTexture> textures_;
    std::vector<preview::Vec3> positions_;
    std::vector<preview::Vec3> normals_;
    PreviewMarkers markers_;
    preview::Vec3 min_{-1, -1, -1};
    preview::Vec3 max_{1, 1, 1};
    bool meshDirty_ = false;

    // The camera: a point it looks at, and its distance and angles (degrees).
    QVector3D target_;
    float distance_ = 100.0f;
    float yaw_ = 40.0f;
    float pitch_ = 15.0f;
    QPoint dragFrom_;
};

} // namespace quarle::ui
