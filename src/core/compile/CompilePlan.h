// A saved script read as the model compiler reads it: what it will build,
// from which files, and where in the script each thing is asked for.
//
// The compiler runs in the script's folder, so relative folders ($cd,
// $cdtexture, $modelname, $include) are taken from there. It reads the
// script's tokens (ScriptTokens) directive by directive; a directive reads
// the tokens it needs, some of them only on its own line. $cd and $scale
// apply to what follows them, $cdtexture folders add up wherever they stand,
// and in a $sequence line words are options when they begin like one
// ("loop_idle" is the option loop) or name a known activity; any other word
// is an animation file. Where the compiler stops reading (a line that is cut
// short, a directive it does not know, ...) the plan stops too, with an issue
// that says why.
#pragma once

#include "compile/CheckModelData.h"
#include "compile/CompilerSmd.h"
#include "localisation/MessageTexts.h"

#include <string>
#include <vector>

namespace quarle::compile {

// A place in the script or one of its includes.
struct PlanPlace {
    int Source = 0; // index into CompilePlan::Sources
    int Line = 0;
};

// Something the compiler will refuse, crash on or do unexpectedly, found
// while reading the script. Args fill the message's %1, %2, ...
struct PlanIssue {
    Msg Id = MSG_END;
    RowKind Kind = RowKind::Error;
    PlanPlace At;
    std::vector<std::string> Args;
};

// A mesh or animation file: the name as the script gives it and the path the
// compiler opens ($cd, "/", name, ".smd"), taken from the script's folder
// when relative.
struct PlanFile {
    std::string Name;
    std::string Path;
    PlanPlace At;
};

// A part of a body group as the compiler reads it: its file (none for a
// blank part) and what applies to it.
struct PlanPart {
    PlanFile File;
    bool Blank = false;
    int BodyPart = 0;
    SmdReadOptions Read; // scale, mirrored bones (frames and turn unused)
    Vec3 Adjust{};       // the origin shift in force when it is read
};

struct PlanBodyPart {
    std::string Name;
    PlanPlace At;
    int Parts = 0;
};

struct PlanEvent {
    int Event = 0;
    int Frame = 0;
    PlanPlace At;
};

struct PlanSequence {
    std::string Name;
    PlanPlace At;
    std::vector<PlanFile> Files; // the first, then the blends
    SmdReadOptions Read;         // frame range, scale, origin shift, turn, mirrored bones
    bool Looping = false;
    int MotionType = 0; // the compiler's motion flags
    std::vector<PlanEvent> Events;
};

// A bone named by $attachment, $controller, $hbox or $hgroup.
struct PlanBoneLink {
    std::string Directive;
    std::string Bone;
    PlanPlace At;
};

// A texture named by $texrendermode or $texturegroup, and the order of
// first use among the textures of the parts.
struct PlanTextureName {
    std::string Texture;
    PlanPlace At;
    int AfterParts = 0; // the number of parts read before it
};

struct PlanRename {
    std::string From;
    std::string To;
};

struct CompilePlan {
    std::vector<std::string> Sources; // the script's file name, then each include as named
    std::string WorkFolder;           // the script's folder
    std::string Output;               // the model file the compiler writes
    PlanPlace OutputAt;
    std::string CdFolder;                    // the last $cd (the folder textures fall back to)
    std::vector<std::string> TextureFolders; // every $cdtexture folder in order, as paths
    std::vector<PlanBodyPart> BodyParts;
    std::vector<PlanPart> Parts;
    std::vector<PlanSequence> Sequences;
    std::vector<PlanBoneLink> BoneLinks; // in script order
    std::vector<PlanRename> Renames;
    std::vector<PlanTextureName> TextureNames;
    std::vector<PlanIssue> Issues;
    bool Stopped = false; // the compiler stops reading the script at the last error issue
};

// Reads the script at qcFile (document bytes) and its includes.
CompilePlan ReadCompilePlan(const std::string& qcFile);

// The path of a file the script names, as the compiler opens it from its
// working folder.
std::string CompilerPath(const CompilePlan& plan, const std::string& path);

} // namespace quarle::compile
