#include "ui/preview/PreviewView.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLWidget>
#include <QPainter>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>

namespace quarle::ui {
namespace {

using preview::Vec3;

constexpr float FieldOfView = 45.0f;
// How much of the view a framed model fills, in its larger extent.
constexpr float FrameFill = 0.8f;
const QColor Background(64, 69, 77);
// The compiled skeleton over the sources' (yellow) one.
const QColor CompiledColour(240, 60, 240);

// Headlight shading: a face toward the camera is lit, one seen edge-on dark.
// Masked texels (alpha 0) are not drawn; additive batches are added unlit.
const char* MeshVertexShader = R"(#version 120
attribute vec3 position;
attribute vec3 normal;
attribute vec2 uv;
uniform mat4 mvp;
uniform vec3 light;
varying vec2 texCoord;
varying float shade;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    texCoord = vec2(uv.x, 1.0 - uv.y);
    float n = length(normal);
    shade = n > 0.0 ? 0.45 + 0.55 * abs(dot(normal / n, light)) : 1.0;
}
)";

// One program per render mode, MODE defined ahead of this: a discard in the
// shader of every batch would cost the software renderer its early depth
// test.
const char* MeshFragmentShader = R"(
uniform sampler2D tex;
varying vec2 texCoord;
varying float shade;
void main() {
    vec4 c = texture2D(tex, texCoord);
#if MODE == 1
    if (c.a < 0.5) {
        discard;
    }
#endif
#if MODE == 2
    gl_FragColor = vec4(c.rgb, 1.0);
#else
    gl_FragColor = vec4(c.rgb * shade, 1.0);
#endif
}
)";

const char* LineVertexShader = R"(#version 120
attribute vec3 position;
attribute vec3 color;
uniform mat4 mvp;
varying vec3 lineColor;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    lineColor = color;
}
)";

const char* LineFragmentShader = R"(#version 120
varying vec3 lineColor;
void main() {
    gl_FragColor = vec4(lineColor, 1.0);
}
)";

QVector3D ToQt(const Vec3& v) {
    return {v[0], v[1], v[2]};
}

// A texture for a batch whose bitmap is missing: grey and magenta squares.
preview::TextureImage Checker() {
    preview::TextureImage image;
    image.Width = image.Height = 16;
    image.Rgba.resize(16 * 16 * 4);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            const bool on = ((x / 4) + (y / 4)) % 2 == 0;
            std::uint8_t* p = &image.Rgba[static_cast<std::size_t>((y * 16 + x) * 4)];
            p[0] = on ? 220 : 90;
            p[1] = on ? 40 : 90;
            p[2] = on ? 220 : 90;
            p[3] = 255;
        }
    }
    return image;
}

// Appends a line of one colour as two corners of position and colour.
void AddLine(std::vector<float>& out, const QVector3D& a, const QVector3D& b, const QColor& c) {
    for (const QVector3D& p : {a, b}) {
        out.insert(out.end(), {p.x(), p.y(), p.z(), float(c.redF()), float(c.greenF()),
                               float(c.blueF())});
    }
}

// A cross of three lines about p.
void AddCross(std::vector<float>& out, const QVector3D& p, float size, const QColor& c) {
    AddLine(out, p - QVector3D(size, 0, 0), p + QVector3D(size, 0, 0), c);
    AddLine(out, p - QVector3D(0, size, 0), p + QVector3D(0, size, 0), c);
    AddLine(out, p - QVector3D(0, 0, size), p + QVector3D(0, 0, size), c);
}

// Whether this process can make a GL context at all. Qt's platforms without
// GL cannot even show a window that holds a GL widget, so the view makes its
// surface only after this said yes. The offscreen platform makes a context
// where an X display is at hand but cannot render a GL widget with it.
bool CanMakeGlContext() {
    static const bool can = [] {
        const QString platform = QGuiApplication::platformName();
        if (platform == QLatin1String("offscreen") || platform == QLatin1String("minimal")) {
            return false;
        }
        QOpenGLContext context;
        if (!context.create()) {
            return false;
        }
        QOffscreenSurface surface;
        surface.setFormat(context.format());
        surface.create();
        const bool current = surface.isValid() && context.makeCurrent(&surface);
        if (current) {
            context.doneCurrent();
        }
        return current;
    }();
    return can;
}

} // namespace

// The GL side of the view: buffers, textures and shaders, and the drawing of
// the view's scene. Mouse events pass through to the view.
class PreviewSurface : public QOpenGLWidget, protected QOpenGLFunctions {
public:
    explicit PreviewSurface(PreviewView& view) : QOpenGLWidget(&view), view_(view) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    ~PreviewSurface() override { ReleaseGl(); }

    std::optional<bool> Available() const {
        if (glReady_) {
            return true;
        }
        return glTried_ ? std::optional<bool>(false) : std::nullopt;
    }

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeEvent(QResizeEvent* event) override {
        QOpenGLWidget::resizeEvent(event);
        glTried_ = true;
    }
    void paintEvent(QPaintEvent* event) override {
        QOpenGLWidget::paintEvent(event);
        glTried_ = true;
    }

private:
    void UploadMesh();
    void DrawTriangles(const QMatrix4x4& mvp);
    void DrawLines(const QMatrix4x4& mvp);
    void ReleaseGl();

    PreviewView& view_;
    bool glTried_ = false;
    bool glReady_ = false;
    std::array<std::unique_ptr<QOpenGLShaderProgram>, 3> meshPrograms_; // by render mode
    std::unique_ptr<QOpenGLShaderProgram> lineProgram_;
    GLuint uvBuffer_ = 0;
    GLuint positionBuffer_ = 0;
    GLuint normalBuffer_ = 0;
    GLuint lineBuffer_ = 0;
    std::vector<GLuint> textureIds_;
};

// The numbers of the attachments, painted over the GL surface (or the
// background where there is none) by a widget of their own, so that they are
// part of every picture of the window.
class PreviewLabels : public QWidget {
public:
    explicit PreviewLabels(PreviewView& view) : QWidget(&view), view_(view) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(QColor(60, 220, 250));
        for (const PreviewMarkers::Attachment& a : view_.Markers().Attachments) {
            if (const std::optional<QPointF> at = view_.Project(a.Point)) {
                painter.drawText(*at + QPointF(6, -6), QString::number(a.Number));
            }
        }
    }

private:
    PreviewView& view_;
};

PreviewView::PreviewView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::ClickFocus);
    setMinimumSize(200, 150);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (CanMakeGlContext()) {
        surface_ = new PreviewSurface(*this);
        layout->addWidget(surface_);
    } else {
        // Nothing to draw with: the view shows its background.
        setAutoFillBackground(true);
        QPalette shade = palette();
        shade.setColor(QPalette::Window, Background);
        setPalette(shade);
    }
    labels_ = new PreviewLabels(*this);
    labels_->raise();
}

PreviewView::~PreviewView() = default;

void PreviewView::Redraw() {
    if (surface_ != nullptr) {
        surface_->update();
    }
    labels_->update();
}

QImage PreviewView::Grab() {
    return surface_ != nullptr ? surface_->grabFramebuffer() : QImage();
}

void PreviewSurface::ReleaseGl() {
    if (!glReady_ || context() == nullptr) {
        return;
    }
    makeCurrent();
    const GLuint buffers[] = {uvBuffer_, positionBuffer_, normalBuffer_, lineBuffer_};
    glDeleteBuffers(4, buffers);
    if (!textureIds_.empty()) {
        glDeleteTextures(GLsizei(textureIds_.size()), textureIds_.data());
    }
    textureIds_.clear();
    for (auto& program : meshPrograms_) {
        program.reset();
    }
    lineProgram_.reset();
    glReady_ = false;
    doneCurrent();
}

std::optional<bool> PreviewView::GlAvailable() const {
    return surface_ != nullptr ? surface_->Available() : std::optional<bool>(false);
}

void PreviewView::SetMesh(const preview::Mesh& mesh, std::vector<PreviewTexture> textures) {
    batchFirst_.clear();
    batchCount_.clear();
    uvs_.clear();
    int first = 0;
    for (const preview::MeshBatch& batch : mesh.Batches) {
        batchFirst_.push_back(first);
        batchCount_.push_back(int(batch.Vertices.size()));
        first += int(batch.Vertices.size());
        for (const preview::MeshVertex& v : batch.Vertices) {
            uvs_.push_back(v.Uv[0]);
            uvs_.push_back(v.Uv[1]);
        }
    }
    textures_ = std::move(textures);
    textures_.resize(batchFirst_.size());
    min_ = mesh.Min;
    max_ = mesh.Max;
    meshDirty_ = true;
    Redraw();
}

void PreviewView::ClearMesh() {
    SetMesh(preview::Mesh{}, {});
    positions_.clear();
    normals_.clear();
    markers_ = {};
}

void PreviewView::SetPose(std::vector<Vec3> positions, std::vector<Vec3> normals,
                          PreviewMarkers markers) {
    positions_ = std::move(positions);
    normals_ = std::move(normals);
    markers_ = std::move(markers);
    Redraw();
}

void PreviewView::FrameModel() {
    yaw_ = 40.0f;
    pitch_ = 15.0f;
    // What is shown now: the corners in their current pose, else the bones
    // (a mesh without triangles), else the mesh's bounds.
    std::vector<QVector3D> points;
    points.reserve(positions_.size());
    for (const Vec3& p : positions_) {
        points.push_back(ToQt(p));
    }
    if (points.empty()) {
        for (const PreviewMarkers::Line& bone : markers_.Bones) {
            points.push_back(ToQt(bone.From));
            points.push_back(ToQt(bone.To));
        }
    }
    if (points.empty()) {
        for (int corner = 0; corner < 8; ++corner) {
            points.push_back(QVector3D(corner & 1 ? max_[0] : min_[0],
                                       corner & 2 ? max_[1] : min_[1],
                                       corner & 4 ? max_[2] : min_[2]));
        }
    }
    QVector3D low = points.front();
    QVector3D high = points.front();
    for (const QVector3D& p : points) {
        low = QVector3D(std::min(low.x(), p.x()), std::min(low.y(), p.y()), std::min(low.z(), p.z()));
        high =
            QVector3D(std::max(high.x(), p.x()), std::max(high.y(), p.y()), std::max(high.z(), p.z()));
    }
    target_ = (low + high) / 2.0f;
    // Every point stays in front of the camera at this distance or more.
    const float radius = std::max((high - low).length() / 2.0f, 0.5f);
    distance_ = radius / std::sin(qDegreesToRadians(FieldOfView / 2.0f));

    // The camera keeps its direction and moves until what it sees is centred
    // and fills FrameFill of the view in its larger extent. Perspective makes
    // near parts larger, so this takes a few rounds.
    const QVector3D forward = (target_ - Eye()).normalized();
    const QVector3D right = QVector3D::crossProduct(forward, QVector3D(0, 0, 1)).normalized();
    const QVector3D up = QVector3D::crossProduct(right, forward);
    const float tanY = std::tan(qDegreesToRadians(FieldOfView / 2.0f));
    const float tanX = tanY * float(std::max(width(), 1)) / float(std::max(height(), 1));
    for (int round = 0; round < 12; ++round) {
        const QVector3D eye = Eye();
        float left = 1e30f, rightmost = -1e30f, bottom = 1e30f, top = -1e30f;
        for (const QVector3D& p : points) {
            const QVector3D d = p - eye;
            const float depth = std::max(QVector3D::dotProduct(d, forward), 1e-6f);
            const float x = QVector3D::dotProduct(d, right) / (depth * tanX);
            const float y = QVector3D::dotProduct(d, up) / (depth * tanY);
            left = std::min(left, x);
            rightmost = std::max(rightmost, x);
            bottom = std::min(bottom, y);
            top = std::max(top, y);
        }
        const float extent = std::max(rightmost - left, top - bottom) / 2.0f;
        target_ += right * ((left + rightmost) / 2.0f * distance_ * tanX) +
                   up * ((bottom + top) / 2.0f * distance_ * tanY);
        if (extent > 0.0f) {
            distance_ = std::max(distance_ * extent / FrameFill, radius * 1.01f);
        }
    }
    Redraw();
}

QVector3D PreviewView::Eye() const {
    const float yaw = qDegreesToRadians(yaw_);
    const float pitch = qDegreesToRadians(pitch_);
    return target_ + distance_ * QVector3D(std::cos(pitch) * std::cos(yaw),
                                           std::cos(pitch) * std::sin(yaw), std::sin(pitch));
}

QMatrix4x4 PreviewView::ViewProjection() const {
    QMatrix4x4 projection;
    const float aspect = float(std::max(width(), 1)) / float(std::max(height(), 1));
    const float radius = (ToQt(max_) - ToQt(min_)).length();
    projection.perspective(FieldOfView, aspect, distance_ * 0.01f, distance_ * 4.0f + radius);
    QMatrix4x4 view;
    view.lookAt(Eye(), target_, QVector3D(0, 0, 1)); // the model's Z is up
    return projection * view;
}

std::optional<QPointF> PreviewView::Project(const Vec3& point) const {
    const QVector4D clip = ViewProjection() * QVector4D(ToQt(point), 1.0f);
    if (clip.w() <= 0.0f) {
        return std::nullopt;
    }
    const float x = clip.x() / clip.w();
    const float y = clip.y() / clip.w();
    return QPointF((x + 1.0) / 2.0 * width(), (1.0 - y) / 2.0 * height());
}

void PreviewSurface::initializeGL() {
    initializeOpenGLFunctions();
    bool linked = true;
    for (int mode = 0; mode < 3; ++mode) {
        auto& program = meshPrograms_[std::size_t(mode)];
        program = std::make_unique<QOpenGLShaderProgram>();
        program->addShaderFromSourceCode(QOpenGLShader::Vertex, MeshVertexShader);
        program->addShaderFromSourceCode(
            QOpenGLShader::Fragment,
            QByteArray("#version 120\n#define MODE ") + QByteArray::number(mode) +
                MeshFragmentShader);
        program->bindAttributeLocation("position", 0);
        program->bindAttributeLocation("normal", 1);
        program->bindAttributeLocation("uv", 2);
        linked = program->link() && linked;
    }
    lineProgram_ = std::make_unique<QOpenGLShaderProgram>();
    lineProgram_->addShaderFromSourceCode(QOpenGLShader::Vertex, LineVertexShader);
    lineProgram_->addShaderFromSourceCode(QOpenGLShader::Fragment, LineFragmentShader);
    lineProgram_->bindAttributeLocation("position", 0);
    lineProgram_->bindAttributeLocation("color", 1);
    if (!linked || !lineProgram_->link()) {
        return; // glReady_ stays false: the window says that it cannot draw
    }
    GLuint buffers[4];
    glGenBuffers(4, buffers);
    uvBuffer_ = buffers[0];
    positionBuffer_ = buffers[1];
    normalBuffer_ = buffers[2];
    lineBuffer_ = buffers[3];
    glReady_ = true;
    view_.meshDirty_ = true;
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { ReleaseGl(); });
}

void PreviewSurface::UploadMesh() {
    view_.meshDirty_ = false;
    glBindBuffer(GL_ARRAY_BUFFER, uvBuffer_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(view_.uvs_.size() * sizeof(float)), view_.uvs_.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    if (!textureIds_.empty()) {
        glDeleteTextures(GLsizei(textureIds_.size()), textureIds_.data());
    }
    textureIds_.assign(view_.textures_.size(), 0);
    if (textureIds_.empty()) {
        return;
    }
    glGenTextures(GLsizei(textureIds_.size()), textureIds_.data());
    const preview::TextureImage checker = Checker();
    for (std::size_t i = 0; i < view_.textures_.size(); ++i) {
        const preview::TextureImage& image =
            view_.textures_[i].Image && view_.textures_[i].Image->Width > 0 ? *view_.textures_[i].Image : checker;
        glBindTexture(GL_TEXTURE_2D, textureIds_[i]);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.Width, image.Height, 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, image.Rgba.data());
        // The game draws its 8-bit textures without smoothing across texels.
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4); // as QPainter's glyph uploads expect it
}

void PreviewSurface::paintGL() {
    glClearColor(Background.redF(), Background.greenF(), Background.blueF(), 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!glReady_) {
        return;
    }
    if (view_.meshDirty_) {
        UploadMesh();
    }
    const QMatrix4x4 mvp = view_.ViewProjection();
    DrawTriangles(mvp);
    DrawLines(mvp);
}

void PreviewSurface::DrawTriangles(const QMatrix4x4& mvp) {
    const std::size_t corners = view_.uvs_.size() / 2;
    if (corners == 0 || view_.positions_.size() != corners || view_.normals_.size() != corners) {
        return;
    }
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glActiveTexture(GL_TEXTURE0);

    glBindBuffer(GL_ARRAY_BUFFER, positionBuffer_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(corners * sizeof(Vec3)), view_.positions_.data(),
                 GL_STREAM_DRAW);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, normalBuffer_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(corners * sizeof(Vec3)), view_.normals_.data(),
                 GL_STREAM_DRAW);
    glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, uvBuffer_);
    glVertexAttribPointer(2, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    for (GLuint a = 0; a < 3; ++a) {
        glEnableVertexAttribArray(a);
    }

    // Solid and masked batches first, then the additive ones over them,
    // blended and leaving the depth buffer as it is.
    const QVector3D light = (view_.Eye() - view_.target_).normalized();
    for (int mode = 0; mode < 3; ++mode) {
        QOpenGLShaderProgram& program = *meshPrograms_[std::size_t(mode)];
        program.bind();
        program.setUniformValue("mvp", mvp);
        program.setUniformValue("light", light);
        program.setUniformValue("tex", 0);
        if (mode == 2) {
            glEnable(GL_BLEND);
            glBlendFunc(GL_ONE, GL_ONE);
            glDepthMask(GL_FALSE);
        }
        for (std::size_t i = 0; i < view_.textures_.size(); ++i) {
            if (std::clamp(view_.textures_[i].Mode, 0, 2) != mode || view_.batchCount_[i] == 0) {
                continue;
            }
            glBindTexture(GL_TEXTURE_2D, textureIds_[i]);
            glDrawArrays(GL_TRIANGLES, view_.batchFirst_[i], view_.batchCount_[i]);
        }
    }
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, 0);
    for (GLuint a = 0; a < 3; ++a) {
        glDisableVertexAttribArray(a);
    }
    meshPrograms_[2]->release();
}

void PreviewSurface::DrawLines(const QMatrix4x4& mvp) {
    std::vector<float> lines;
    const float size = std::max((ToQt(view_.max_) - ToQt(view_.min_)).length(), 1.0f) * 0.02f;
    for (const PreviewMarkers::Line& bone : view_.markers_.Bones) {
        AddLine(lines, ToQt(bone.From), ToQt(bone.To), QColor(250, 220, 60));
    }
    for (const PreviewMarkers::Line& bone : view_.markers_.Compiled) {
        AddLine(lines, ToQt(bone.From), ToQt(bone.To), CompiledColour);
        AddCross(lines, ToQt(bone.To), size * 0.5f, CompiledColour);
    }
    for (const PreviewMarkers::Attachment& a : view_.markers_.Attachments) {
        AddCross(lines, ToQt(a.Point), size, QColor(60, 220, 250));
    }
    if (view_.markers_.Eye) {
        AddCross(lines, ToQt(*view_.markers_.Eye), size * 1.5f, QColor(80, 250, 80));
    }
    if (const auto& c = view_.markers_.Control) {
        const QColor orange(250, 140, 30);
        const QVector3D origin = ToQt(c->Origin);
        AddCross(lines, origin, size, orange);
        AddLine(lines, origin - ToQt(c->Axis) * size * 6.0f, origin + ToQt(c->Axis) * size * 6.0f,
                orange);
        for (std::size_t i = 1; i < c->Arc.size(); ++i) {
            AddLine(lines, ToQt(c->Arc[i - 1]), ToQt(c->Arc[i]), orange);
        }
        if (!c->Arc.empty()) {
            AddLine(lines, origin, ToQt(c->Arc.front()), orange);
            AddLine(lines, origin, ToQt(c->Arc.back()), orange);
        }
    }
    if (lines.empty()) {
        return;
    }
    // Lines show through the model, so that a bone inside it can be seen.
    glDisable(GL_DEPTH_TEST);
    lineProgram_->bind();
    lineProgram_->setUniformValue("mvp", mvp);
    glBindBuffer(GL_ARRAY_BUFFER, lineBuffer_);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(lines.size() * sizeof(float)), lines.data(),
                 GL_STREAM_DRAW);
    const GLsizei stride = 6 * sizeof(float);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, stride, nullptr);
    glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(3 * sizeof(float)));
    glEnableVertexAttribArray(0);
    glEnableVertexAttribArray(1);
    glDrawArrays(GL_LINES, 0, GLsizei(lines.size() / 6));
    glDisableVertexAttribArray(0);
    glDisableVertexAttribArray(1);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    lineProgram_->release();
}

void PreviewView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    labels_->setGeometry(rect());
}

void PreviewView::mousePressEvent(QMouseEvent* event) {
    dragFrom_ = event->position().toPoint();
}

void PreviewView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    const QPoint step = at - dragFrom_;
    dragFrom_ = at;
    if (event->buttons() & Qt::LeftButton) {
        yaw_ -= float(step.x()) * 0.5f;
        pitch_ = std::clamp(pitch_ + float(step.y()) * 0.5f, -89.0f, 89.0f);
    } else if (event->buttons() & (Qt::RightButton | Qt::MiddleButton)) {
        // The point looked at moves with the mouse, in the plane of the view.
        const QVector3D forward = (target_ - Eye()).normalized();
        const QVector3D right = QVector3D::crossProduct(forward, QVector3D(0, 0, 1)).normalized();
        const QVector3D up = QVector3D::crossProduct(right, forward);
        const float perPixel = 2.0f * distance_ *
                               std::tan(qDegreesToRadians(FieldOfView / 2.0f)) /
                               float(std::max(height(), 1));
        target_ += (-float(step.x()) * right + float(step.y()) * up) * perPixel;
    } else {
        return;
    }
    Redraw();
}

void PreviewView::wheelEvent(QWheelEvent* event) {
    distance_ = std::max(distance_ * std::pow(0.999f, float(event->angleDelta().y())), 0.01f);
    Redraw();
}

} // namespace quarle::ui
