// What the preview draws of a compiled model, worked out without a window:
// the bone matrices of a frame of a sequence, the triangles of the chosen
// models with the textures of a skin family, the textures' pixels, and the
// compiled skeleton laid over the one the sources give at the same
// sequence and frame.
//
// The compiler moves an animation's root bones: it takes the origin off
// ($origin, or the sequence's own), turns them about Z by 90 degrees plus
// the rotation given ($origin's fourth value, or the sequence's rotate),
// scales them ($scale, or the sequence's scale), and takes the linear
// movement of an LX, LY or LZ sequence out of every frame. The reference
// pose (the bones at rest) is only scaled. The overlay undoes this for the
// compiled skeleton, so that sources and result meet where the script says
// they should: what stays apart is a finding (a model compiled from another
// script or other files, a rotated root, a missing bone).
#pragma once

#include "preview/ModelPose.h"
#include "studio/StudioModel.h"

#include <string>
#include <vector>

namespace quarle::preview {

// The model-space matrices of the bones in a frame (clamped into the
// sequence) of its first blend; a sequence outside the model gives the bones
// at rest.
std::vector<BoneMatrix> PoseCompiled(const studio::StudioModel& model, int sequence, int frame);

// The skeleton at rest: names, parents and matrices.
Skeleton CompiledSkeleton(const studio::StudioModel& model);

// The triangles of the models chosen in each body part (chosen[part], 0 when
// chosen is shorter or out of range) in the pose at rest, one batch per
// texture of the skin family (the family clamped into the model's); the
// batch's Texture is the texture's name, and textures[i] the index of batch
// i's texture (-1 for a model without textures). Bones is the skeleton at
// rest, so SkinMesh poses the mesh.
Mesh BuildCompiledMesh(const studio::StudioModel& model, const std::vector<int>& chosen,
                       int family, std::vector<int>& textures);

// A texture's pixels as RGBA rows from the top; index 255 is transparent in
// a masked texture.
TextureImage CompiledTexture(const studio::Texture& texture);

// 0 normal, 1 masked, 2 additive, by a texture's flags.
int CompiledRenderMode(int flags);

// How the compiler placed a sequence's frames: see above.
struct Placement {
    Vec3 Origin{};
    float Turn = 0;  // radians about Z
    float Scale = 1; // of the sequence's positions
};

// The placement the script gives an animation, or (without one) the
// reference pose's.
Placement PlacementOf(const Document& doc, const AnimRec* anim);

// The compiled sequence of the animation at slot of group: the one of its
// name (ignoring case), and of several of that name the one in the same
// place among them as the animation among the document's of that name, in
// the order of the script. -1 when the model has none.
int CompiledSequence(const Document& doc, int group, int slot,
                     const studio::StudioModel& model);

// The compiled frame that shows the frame at position fileFrame of an
// animation file: its time, counted from the first time the compiler takes
// (within the record's frame range when FrameLimit is on).
int CompiledFrame(const SmdModel& animation, const AnimRec& anim, int fileFrame);

struct SkeletonComparison {
    // The compiled bones in the space the preview draws the sources in
    // (scaled by the model's scale), and their parents.
    std::vector<Vec3> Joints;
    std::vector<int> Parents;
    // The largest distance between a bone of the sources and the compiled
    // bone of the same name, and which bone it is (empty with none in both).
    float Largest = 0;
    std::string LargestBone;
    std::vector<std::string> OnlyCompiled; // bones the sources lack
    std::vector<std::string> OnlySources;  // bones with vertices the compiled model lacks
};

// Lays the compiled skeleton in a frame of a sequence (or at rest, with a
// sequence outside the model) over the sources' joints (sourceJoints, in the
// preview's space, one per bone of sources); carried marks the bones of the
// sources that carry vertices.
SkeletonComparison CompareSkeletons(const Skeleton& sources, const std::vector<Vec3>& sourceJoints,
                                    const std::vector<bool>& carried,
                                    const studio::StudioModel& model, int sequence, int frame,
                                    const Placement& placement, float modelScale);

} // namespace quarle::preview
