#!/usr/bin/env python3
"""Writes the language files data/deutsch.lng and data/english.lng.

A form's German texts are typed once, in the form: its designed captions and
tool tips. quarle-form-texts (built beside the program) dumps them from every
form of the catalogue (src/ui/FormCatalogue.cpp) into tools/lng/forms.tsv,
which is committed, so this script runs without a build. The tables below keep
the rest: the English text of each form's entries (FORMS, by form; the forms
and their order are the dump's), the few places where
the German file deliberately says something else than the form
(GERMAN_DIFFERENCES), the German texts of the messages (their keys and English
texts are the program's own, read from MessageTexts.h), and the table of the
93 global strings. Edit them here and run

    build/bin/quarle-form-texts tools/lng/forms.tsv  # after a form's texts changed
    python3 tools/lng/generate.py          # rewrite both files
    python3 tools/lng/generate.py --check  # exit 1 when a file is out of date

The files are cp1252 with CR LF line ends. Each form section holds "Titel"
and two lines per control: the caption line and the tool tip line, both with
the control's key. Menu separators are lines, not controls with a caption, and
have no entry. The messages section ("Quarle Messages", one line per key)
stands behind the form sections and ahead of "Global Strings", where readers
that do not know it skip it. A property the control doesn't have is written as
"<not available>", as the language editor writes it. An empty value keeps the
designed text, so the German file repeats the designed German texts and the
English file must give every one of them.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
DATA = ROOT / "data"
FORM_TEXTS = ROOT / "tools" / "lng" / "forms.tsv"
KEY_TABLE = ROOT / "src" / "core" / "localisation" / "GlobalStrings.h"
MESSAGE_TABLE = ROOT / "src" / "core" / "localisation" / "MessageTexts.h"
SEQUENCE_NUMBERS = ROOT / "src" / "core" / "document" / "SequenceNumbers.h"
MESSAGES_LINE = "Quarle Messages"

VERSION = "0.8.4"
SEPARATOR = "-" * 22
NA = None  # a property the control doesn't have
NOT_AVAILABLE = "<not available>"

LANGUAGES = {
    # file name: (column, description, count line key)
    "deutsch.lng": (0, "Deutsch", "Anzahl"),
    "english.lng": (1, "English", "Count"),
}


def C(key, en, en_tip=""):
    """A control with a caption and a tool tip (label, button, frame...)."""
    return (key, en, en_tip)


def T(key, en_tip):
    """A control with a tool tip only (text box, list, combo box, picture)."""
    return (key, NA, en_tip)


def M(key, en):
    """A menu entry: a caption, no tool tip."""
    return (key, en, NA)


def recent(key):
    """A recent-file menu entry: it always shows the file, whatever stands here."""
    return (key, "...", NA)


BACK = C("CmdZurueck", "<-- Back")
CANCEL_WIZARD = C("CmdAbbrechen", "Cancel")
NEXT = C("CmdWeiter", "Next -->")
OK = C("OKButton", "OK")
CANCEL = C("CancelButton", "Cancel")

AXIS_TIP = "Sets the axis about which Half-Life can take control"
LIMIT_TIP = ("How many degrees it can turn about the axis (e.g. so that a head cannot turn "
             "all the way round)")
LX_TIP = ("($sequence - LX) - Keeps the model from being put back to its starting position "
          "after the animation")


def sequence_numbers():
    """The English of the animation dialog's numeric options, in their
    table's order: each row's label, and its text box where that has a tool
    tip. The table (SequenceNumbers.h) holds both languages of each row."""
    text = SEQUENCE_NUMBERS.read_text(encoding="utf-8")
    start = text.index("SequenceNumbers{")
    table = text[start:text.index("};", start)]
    literal = r'((?:\s*"(?:[^"\\]|\\.)*")+)'
    controls = re.findall(r'\.(Label|Box) = \{"(\w+)",' + literal + "," + literal + r"\}", table)
    if len(controls) != 2 * table.count("SequenceNumber{"):
        sys.exit(f"generate.py: {SEQUENCE_NUMBERS.name}: each row needs its .Label and .Box "
                 'as {"name", "German", "English"}')
    entries = []
    for kind, name, _, pieces in controls:
        english = re.sub(r"\\(.)", r"\1", "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', pieces)))
        if kind == "Label":
            entries.append(C(name, english))
        elif english:
            entries.append(T(name, english))
    return entries


def axes():
    return [C(f"CtrlAchse({i})", f"{a} axis", AXIS_TIP) for i, a in enumerate("XYZ")]


def skeleton_views():
    """The controls that the attachment and the controller dialog share."""
    return [
        C("Label6", "Front view (X,Y)"),
        C("Label7", "Top view (X,Z)"),
        C("Frame2", "Bone"),
        C("Label8", "X:"),
        C("Label9", "Y:"),
        C("Label10", "Z:"),
        C("Label11", "Parent:"),
    ]


# The English of each form's entries, by form, in the order of their entries
# in the files. Which forms there are, and the order of the sections, is the
# dump's (forms.tsv, the catalogue's order); the German is the form's own.
FORMS = {
    "FrmMain": ("Quarle", [
        C("CmdModeleinst", "Model settings", "Scale, controllers, eye position, etc."),
        C("CmdCompile", "Build model", "Saves the script and builds the model with the compiler"),
        C("FrmPaths", "Paths"),
        C("LblTexturepath", "Texture path:"),
        T("TxtTexturepath", "($cdtexture) - Folder that holds the textures of the model"),
        C("CmdBrowseTexture", "...", "Browse"),
        C("LblModelpath", "Model files path:"),
        T("TxtModelpath", "($cd) - Folder that holds the files of the model"),
        C("CmdBrowseModel", "...", "Browse"),
        C("FrmModelfiles", "Model files"),
        T("LstFiles", "Available model files"),
        T("FileList", "Available model files"),
        C("CmdAdd", "", "Add the selected files"),
        C("CmdDelAnimation", "", "Remove the selected entries"),
        C("TabSmd", "Model files"),
        T("CmbBodyGroup", "Body groups of the model"),
        C("CmdNewGroup", "New", "Adds a new body group"),
        C("CmdDel", "Delete", "Deletes the selected body group"),
        C("CmdRename", "Rename"),
        C("LblParameter", "Options:"),
        C("ChkReverse", "Reverse"),
        T("LstAnimations", "All animations of the model"),
        C("LblAnimGroup", "Anim group:"),
        C("LblAnimName", "Name:"),
        T("TxtAnimName", "($sequence) - Name of the animation"),
        C("LblAnimID", "Activity:"),
        T("TxtAnimID",
          "Sets the activity name of a predefined standard behaviour, if there is one"),
        C("LblSMDFile", "SMD file:"),
        C("CmdAnimExt", "Advanced"),
        C("CmdWizBack", "Back"),
        C("CmdNext", "Next"),
        C("CmdEnd", "End"),
        M("MnuDatei", "&File"),
        M("MnuDateiNeu", "&New"),
        M("MnuDateiOeffnen", "&Open..."),
        M("MnuDateiSpeichern", "&Save"),
        M("MnuDateiSpeichernunter", "Save &as..."),
        M("MnuDateiComp", "&Build .mdl file"),
        M("MnuDateiView", "Open model in &viewer"),
        M("MnuDateiViewCode", "Open .qc file in &editor"),
        M("MnuDateiPreview", "&3D preview"),
        M("MnuDateiOpenCompiled", "Open &compiled model..."),
        recent("MnuDateiLast1"),
        recent("MnuDateiLast2"),
        recent("MnuDateiLast3"),
        recent("MnuDateiLast4"),
        M("MnuDateiBeenden", "E&xit"),
        M("MnuEinstellungen", "&Settings"),
        M("MnuEinstModel", "&Model settings"),
        M("MnuEinstAllg", "&General settings"),
        M("MnuWizards", "&Wizards"),
        M("MnuWizardsWizAn", "&Assistant on"),
        M("MnuWizardsGrWiz", "&Base settings wizard"),
        M("MnuWizardsAnimWiz", "&Animation wizard"),
        M("MnuHilfe", "&Help"),
        M("MnuHilfeUeber", "&About"),
    ]),
    "DlgSettings": ("General settings", [
        C("FrmPaths", "Paths"),
        C("LblStudioMDL", "Compiler:"),
        T("TxtStudioMDL", "Path of the compiler (studiomdl)"),
        C("LblModelviewer", "Model viewer:"),
        T("TxtModelviewer", "Path of the model viewer"),
        C("LblEditor", "Text editor:"),
        T("TxtEditor", "Path of the text editor for the .qc script"),
        C("Command1", "...", "Browse for the compiler"),
        C("Command2", "...", "Browse for the model viewer"),
        C("Command3", "...", "Browse for the text editor"),
        T("ImageStudioMDL", "Found, and can it be started?"),
        T("ImageModelviewer", "Found, and can it be started?"),
        T("ImageEditor", "Found, and can it be started?"),
        C("FrmSprache", "Language"),
        T("CmbLanguage", "Language of the program; a pick applies at once"),
        C("LblVersion", "Version:"),
        C("CmdNewLocalisation", "New localisation"),
        # The button names what a click will do, and its click sets these
        # English words itself: the caption stays English in every language.
        C("CmdLocalisationmode", "Localisationmode on"),
        C("CmdLocaliseStrings", "", "Translate the global strings"),
        OK,
        CANCEL,
        C("ChkPreviewViewer", "Open models in Quarle's 3D preview",
          "Shows compiled models itself instead of starting a model viewer"),
    ]),
    "frmAbout": ("About", [
        C("lblTitle", "Quarle"),
        C("lblDisclaimer",
          "Quarle writes and edits .qc scripts for Half-Life models. Use at your own risk."),
        C("LblFreeware", "Freeware"),
        # The caption is filled at load with the version string and the
        # program's version.
        C("LblVersion", "", "Version of the program"),
        C("CmdOK", "OK"),
    ]),
    "FrmPreview": ("3D preview", [
        T("PicView", "Left button turns, right or middle button moves, the wheel zooms"),
        C("CmdPlay", "Play", "Plays the selected animation or holds it"),
        C("CmdFrameModel", "Frame model (F)", "Shows the whole model"),
        C("LblStatus", "", "What the preview shows and what it lacks"),
        C("ChkCompiled", "Compiled skeleton",
          "Lays the skeleton of the compiled model over the one of the sources, in magenta"),
    ]),
    "FrmCompiledModel": ("Compiled model", [
        T("PicView", "Left button turns, right or middle button moves, the wheel zooms"),
        C("LblSequences", "Sequences:"),
        T("LstSequences", "The sequence the model plays"),
        C("LblBodyPart", "Body part:"),
        T("CmbBodyPart", ""),
        C("LblSubModel", "Model:"),
        T("CmbSubModel", "The model this body part shows"),
        C("LblSkin", "Skin family:"),
        T("CmbSkin", "Which textures the meshes wear"),
        C("CmdPlay", "Play", "Plays the chosen sequence or holds it"),
        C("CmdFrameModel", "Frame model (F)", "Shows the whole model"),
        C("LblStatus", "", "What the preview shows and what it lacks"),
    ]),
    "DlgOrigin": ("Origin offset", [
        C("Label4", "X,Y"),
        T("PicXYVer", "Click to set the X and Y offset"),
        C("Label5", "X,Z"),
        T("PicXZVer", "Click to set the X and Z offset"),
        C("Label1", "X:"),
        T("TxtX", "X offset (Enter takes it)"),
        C("Label2", "Y:"),
        T("TxtY", "Y offset (Enter takes it)"),
        C("Label3", "Z:"),
        T("TxtZ", "Z offset (Enter takes it)"),
        OK,
        CANCEL,
    ]),
    "DlgController": ("Controllers", skeleton_views() + [
        T("TxtBone", "Lists the bones of the model"),
        C("Label1", "Controller no.:"),
        T("CmbController", "Choose a controller number"),
        C("ChkCtrlAktiv", "Controller on", "Is the controller active?"),
        C("Label2", "Bone:", "Bone that the controller turns"),
        C("FrameCtrl", "Controller settings"),
        *axes(),
        C("Label3", "Angle limits:"),
        C("Label4", "Min:"),
        T("TxtLimitMin", LIMIT_TIP),
        C("Label5", "Max:"),
        T("TxtLimitMax", LIMIT_TIP),
        OK,
    ]),
    "Wizard2": ("Wizard - Paths", [
        C("LblHelpText1",
          "Now enter the folder that holds the textures of the model, and the folder that "
          "holds its .smd files (the animation and reference files)."),
        C("LblHelpText2", "e.g. for the texture path:"),
        C("LblHelpText3", r'"c:\models\mymodel\textures"'),
        C("LblHelpText4", "e.g. for the model files path:"),
        C("LblHelpText5", r'"c:\models\mymodel"'),
        C("LblTexturepath", "Texture path:"),
        T("TxtWiz2Texturenpfad", "Folder that holds the textures of the model"),
        C("CmdWiz2Texturenpfad", "..."),
        C("LblModelpath", "Model files path:"),
        T("TxtWiz2Modelpfad", "Folder that holds the files of the model"),
        C("CmdWiz2Modelpfad", "..."),
        CANCEL_WIZARD,
        NEXT,
    ]),
    "Wizard3": ("Wizard - Reference model", [
        C("LblHelpText1",
          "Choose the reference model: the .smd file that holds the body of the model, not "
          "just its bones."),
        C("LblModelfiles", "Model files in the model folder:"),
        C("CmdAssign", "", "Take the selected file as the reference model"),
        C("LblReferencemodel", "Reference model:"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    "Wizard4": ("Wizard - Other settings", [
        C("FrmScale", "Scale"),
        C("LblHelpText1",
          'Enter the scale at which the model is to be built. It can usually stay at "1".'),
        C("LblScale", "Scale:"),
        C("FrmEyes", "Eyes"),
        C("LblHelpText2",
          "If the model is a monster or another creature with eyes, enter the X, Y and Z "
          "coordinates of its eyes now."),
        C("ChkWiz4Augen", "Eyes"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    "Wizard5": ("Wizard", [
        C("LblAllRight", "Is everything right?"),
        BACK,
        CANCEL_WIZARD,
        C("CmdFertig", "Finish"),
    ]),
    "AnimWiz1": ("Animation wizard", [
        C("LblHelpText",
          "Enter a name for the animation. The finished .mdl file calls the animation by this "
          'name: for a jump, for example, "jump".'),
        C("LblAnimationname", "Animation name:"),
        CANCEL_WIZARD,
        NEXT,
    ]),
    "AnimWiz2": ("Animation wizard", [
        C("LblHelpText",
          "Choose the model file that holds the animation. It must lie in the folder that you "
          'gave as the model path, for example "jump.smd".'),
        C("LblAvailableModels", "Model files in the model folder:"),
        C("CmdAssignAnimation", "", "Take the selected file as the animation file"),
        C("LblAnimationmodel", "Animation file:"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    "AnimWiz3": ("Animation wizard", [
        C("FrmAnimationID", "Activity"),
        C("LblHelpText1",
          "If the animation shows a standard action, such as walking or shooting, you can "
          "choose the matching activity for it. The game then plays it by itself whenever "
          "that action happens."),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    "AnimWiz4": ("Animation wizard", [
        C("FrmFPS", "Frames per second"),
        C("LblHelpText1",
          "How fast should the animation run, in frames per second (fps)? The default is 30."),
        C("LblFPS", "Fps:"),
        C("FrmFramelilimts", "Frame range"),
        C("LblHelpText2",
          "If not every frame of the animation is to be shown, enter its first and last frame "
          "here."),
        C("ChkAnimWiz4Frame", "Frames:"),
        C("LblTo", "to"),
        C("FrmLoop", "Loop"),
        C("LblHelpText3", "Should the animation repeat over and over?"),
        C("ChkAnimWiz4Schleife", "Loop"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    "AnimWiz5": ("Animation wizard", [
        C("LblAllRight", "Is everything right?"),
        BACK,
        CANCEL_WIZARD,
        C("CmdWeiter", "Finish"),
    ]),
    "DlgCompile": ("Compiling", [
        OK,
        # Ends the wait for a compiler that doesn't finish.
        C("CmdCancel", "Cancel"),
        # Shown when the checks found errors.
        C("CmdCompileAnyway", "Compile anyway",
          "Run the compiler in spite of the errors: a newer compiler accepts some of what the "
          "checks refuse"),
        C("ChkViewAfterCompile", "Open the model in the viewer after compiling"),
    ]),
    "DlgBindung": ("Attachments", skeleton_views() + [
        C("Label1", "Attachment no.:"),
        T("CmbBindung", "Choose an attachment number"),
        C("ChkBndgAktiv", "Attachment on", "Is the attachment active?"),
        C("Label2", "Bone:", "Bone that the attachment hangs on"),
        C("Frame1", "Attachment point"),
        C("Label3", "X coordinate:"),
        T("TxtBindungX", "X coordinate of the attachment, relative to the bone"),
        C("Label4", "Y coordinate:"),
        T("TxtBindungY", "Y coordinate of the attachment, relative to the bone"),
        C("Label5", "Z coordinate:"),
        T("TxtBindungZ", "Z coordinate of the attachment, relative to the bone"),
        OK,
    ]),
    "DlgModeleinstellungen": ("Model settings", [
        C("Label2", "Scale:", "($scale) - Builds the model at another scale"),
        T("TxtMassstab", "Enlarges or shrinks the original model (1 = original size)"),
        C("ChkAugen", "Eyes:", "($eyeposition) - Position of the eyes of the model"),
        T("TxtAugenX", "X coordinate"),
        T("TxtAugenY", "Y coordinate"),
        T("TxtAugenZ", "Z coordinate"),
        C("Label1", "Texture gamma:"),
        T("TxtGamma",
          "($gamma) - Sets the brightness of all textures of the model - the default is 1.8"),
        C("ChkExtTex", "Store textures separately",
          "($externaltextures) - The textures are stored outside the model, in files of their "
          "own"),
        C("ChkSequenceGroupSize", "Split model file:"),
        C("LblKB", "KB"),
        C("CmdAttachment", "Attachments",
          "($attachment) - Marks places on the model where sprites, shells or anything else "
          "come out"),
        C("CmdController", "Controllers",
          "($controller) - Hands control of a bone to Half-Life (e.g. turning the head towards "
          "an enemy)"),
        C("CmdTextureGroup", "Alt. textures"),
        C("CmdTexturemode", "Texture modes"),
        OK,
    ]),
    "DlgName": ("Enter the name of the group", [
        C("Label1", "Group name:"),
        C("CmdOK", "Add"),
        C("CmdAbbrechen", "Cancel"),
    ]),
    "FrmEvents": ("Events", [
        C("CmdDel", "", "Deletes the selected events"),
        C("LblFrame", "Frame:"),
        C("LblParameter", "Parameter:"),
        # No code writes these two labels: only the language file fills them.
        C("LblDescription", "Description:"),
        C("LblBeschreibung",
          "Pick events in the list and add them to the animation with the arrow. Select an "
          "event of the animation to enter its frame and its parameter (a sound, a sentence or "
          "a target name, as the event needs)."),
        C("CmdOK", "OK"),
    ]),
    "DlgAnimExt": ("Advanced animation properties", [
        *sequence_numbers(),
        C("Check1", "Loop", "($sequence ... loop) - The animation repeats over and over"),
        C("ChkLX", "LX", LX_TIP),
        C("ChkLY", "LY", LX_TIP),
        C("ChkLZ", "LZ", LX_TIP),
        C("ChkFrameGrenze", "Frames:", "Use only some of the frames"),
        T("TxtMinFrame", "First frame"),
        C("Label8", "to"),
        T("TxtMaxFrame", "Last frame"),
        C("CmdEvents", "Events"),
        C("CmdOrigin", "XYZ offset", "($sequence - origin) - Moves the origin of the model"),
        C("ChkBlend", "Animation blending"),
        C("Label1", "SMD file:"),
        C("FrameCtrl", "Blending settings"),
        *axes(),
        C("Label3", "Limits:"),
        C("Label4", "Min:"),
        T("TxtLimitMin", LIMIT_TIP),
        C("Label5", "Max:"),
        T("TxtLimitMax", LIMIT_TIP),
        OK,
    ]),
    "DlgRenameGroup": ("Rename group", [
        C("Label1", "New name of the group:"),
        OK,
        CANCEL,
    ]),
    # The two texture dialogs keep their designed captions at load; their
    # sections are here for the language editor, which rewrites them.
    "DlgTextureGroup": ("Texture variations", [
        C("LblTexturegroup", "Variation:"),
        C("FrmVariation", "Variation"),
        C("LblTextur", "Texture to change:"),
        C("ChkChangeTo", "Change to:"),
        C("LblPreview", "Preview:"),
        OK,
    ]),
    "DlgTexturemode": ("Texture modes", [
        C("LblTextures", "Textures:"),
        C("FrmRenderMode", "Render mode:"),
        C("OptModes(0)", "Normal"),
        C("OptModes(1)", "Masked"),
        C("OptModes(2)", "Additive"),
        C("LblWarning", "Warning: not every compiler supports this function!"),
        OK,
    ]),
}

# Where the German file says something else than the form as it is built
# (designed, before its load): a text that only the language file gives. (form, control key or "Titel", "caption" or "tip"): the German.
GERMAN_DIFFERENCES = {
    # The recent-file entries show the files; their designed caption is empty.
    **{("FrmMain", f"MnuDateiLast{i}", "caption"): "..." for i in range(1, 5)},
    # The designed title is the designer's placeholder.
    ("DlgSettings", "Titel", "caption"): "Allgemeine Einstellungen",
    ("DlgRenameGroup", "Titel", "caption"): "Gruppe umbenennen",
    # Tool tips that only the language file gives.
    ("DlgSettings", "TxtStudioMDL", "tip"): "Pfad des Compilers (studiomdl)",
    ("DlgSettings", "TxtModelviewer", "tip"): "Pfad des Modelviewers",
    ("DlgSettings", "TxtEditor", "tip"): "Pfad des Texteditors für die qc-Datei",
    ("DlgSettings", "Command1", "tip"): "Compiler suchen",
    ("DlgSettings", "Command2", "tip"): "Modelviewer suchen",
    ("DlgSettings", "Command3", "tip"): "Texteditor suchen",
    ("DlgSettings", "CmbLanguage", "tip"): "Sprache des Programms; die Wahl gilt sofort",
    ("DlgSettings", "CmdLocaliseStrings", "tip"): "Globale Texte übersetzen",
    ("frmAbout", "LblVersion", "tip"): "Version des Programms",
    # A value keeps no outer blanks; the form puts a blank before the path.
    ("Wizard2", "LblHelpText3", "caption"): '"c:\\modells\\meinmodell\\texturen"',
    ("Wizard2", "LblHelpText5", "caption"): '"c:\\modells\\meinmodell"',
    # No code writes these two labels: only the language file fills them.
    ("FrmEvents", "LblDescription", "caption"): "Beschreibung:",
    ("FrmEvents", "LblBeschreibung", "caption"):
        "Wähle Events aus der Liste aus und füge sie mit dem Pfeil der Animation hinzu. "
        "Markiere ein Event der Animation, um seinen Frame und seinen Parameter (Sound, Satz "
        "oder Zielname, je nach Event) einzugeben.",
}

# The German texts of the messages beyond the key table. %1, %2, ... are the
# variable parts, in the order the English text has them.
GERMAN_MESSAGES = {
    "MSG_PARTS_FULL": "Diese Bodygruppe hat schon %1 Teile, mehr kann eine Gruppe nicht "
                      "aufnehmen. Es wurde kein Teil hinzugefügt.",
    "MSG_GROUPS_FULL": "Das Modell hat schon %1 Bodygruppen, mehr kann es nicht aufnehmen. Es "
                       "wurde keine Gruppe hinzugefügt.",
    "MSG_ANIMATIONS_FULL": "Diese Sequenzgruppe hat schon %1 Animationen, mehr kann eine Gruppe "
                           "nicht aufnehmen. Es wurde keine Animation hinzugefügt.",
    "MSG_SAVE_FAILED": "Die qc-Datei konnte nicht gespeichert werden.",
    "MSG_SAVE_SCRIPT": "Datei: %1",
    "MSG_SAVE_OLD_FILE_KEPT": "Eine ältere Datei dieses Namens ist unverändert.",
    "MSG_VIEWER_MISSING": "Der Modelviewer wurde nicht gefunden:",
    "MSG_EDITOR_MISSING": "Der Texteditor wurde nicht gefunden:",
    "MSG_VIEWER_NOT_STARTED": "Der Modelviewer konnte nicht gestartet werden:",
    "MSG_EDITOR_NOT_STARTED": "Der Texteditor konnte nicht gestartet werden:",
    "MSG_CHOOSE_PROGRAM": "Trage ihn unter Einstellungen - Allgemeine Einstellungen ein.",
    "MSG_COMPILE_CANNOT_START": "Das Kompilieren kann nicht beginnen: %1",
    "MSG_SCRIPT_NOT_WRITTEN": "%1 kann in %2 nicht geschrieben werden: %3",
    "MSG_SCRIPT_NOT_STARTED": "%1 kann nicht gestartet werden: %2",
    "MSG_COMPILE_CANCELLED": "Kompilieren abgebrochen; der Compiler wurde beendet.",
    "MSG_COMPILE_TIMED_OUT": "Kompilieren beendet: kein Ergebnis nach %1 s.",
    "MSG_SCRIPT_NO_MARKER": "%1 endete, ohne %2 zu schreiben.",
    "MSG_COMPILE_NO_MODEL": "Der Compiler endete, ohne das Modell \"%1\" zu schreiben.",
    "MSG_STATUS_LINE": "%1; %2; %3.",
    "MSG_STATUS_REFUSED": "Nicht kompiliert: die Prüfung fand %1.",
    "MSG_STATUS_NOT_STARTED": "Nicht kompiliert: das Compile-Skript konnte nicht gestartet "
                              "werden.",
    "MSG_STATUS_FINISHED": "Compiler fertig mit Rückgabewert %1",
    "MSG_STATUS_NO_EXIT_STATUS": "Compiler fertig (Rückgabewert unbekannt)",
    "MSG_STATUS_NOT_RUNNABLE": "Compiler konnte nicht laufen (Rückgabewert %1)",
    "MSG_STATUS_CANCELLED": "Kompilieren nach %1 s abgebrochen",
    "MSG_STATUS_TIMED_OUT": "Kompilieren beendet: kein Ergebnis nach %1 s",
    "MSG_STATUS_NO_MARKER": "Das Compile-Skript endete, ohne seine Fertig-Datei zu schreiben",
    "MSG_STATUS_LOG": "Log: %1, %2",
    "MSG_STATUS_MODEL_WRITTEN": "Modell geschrieben: %1",
    "MSG_STATUS_MODEL_REWRITTEN": "Modell neu geschrieben: %1",
    "MSG_STATUS_MODEL_UNCHANGED": "Modell nicht verändert: %1",
    "MSG_STATUS_NO_MODEL": "kein Modell geschrieben",
    "MSG_ONE_ERROR": "1 Fehler",
    "MSG_ERRORS": "%1 Fehler",
    "MSG_ONE_WARNING": "1 Warnung",
    "MSG_WARNINGS": "%1 Warnungen",
    "MSG_READ_SCRIPT_UNREADABLE": "Die qc-Datei kann nicht geöffnet werden",
    "MSG_READ_WORK_FILE_UNWRITABLE": "Die Arbeitsdatei kann nicht geschrieben werden",
    "MSG_READ_BINARY_FILE": "Die Datei enthält NUL-Bytes wie eine Binärdatei und ist kein Skript; "
                            "sie wurde nicht gelesen",
    "MSG_READ_UTF16_TEXT": "Die Datei ist UTF-16-Text (sie beginnt mit einer Byte-Order-Mark), den "
                           "der Modell-Compiler nicht lesen kann; sie wurde nicht gelesen. Bitte "
                           "sie zuerst als ANSI- oder Einbyte-Text speichern",
    "MSG_READ_PART_FILE_MISSING": "Die Datei eines Teils fehlt; ihre Texturen wurden nicht "
                                  "gelesen",
    "MSG_READ_PART_NOT_IN_MODEL_PATH": "Die gewählte Datei ist keine smd-Datei im Modellordner; "
                                       "das Teil bleibt, wie es war",
    "MSG_READ_DETAIL": "%1: „%2“",
    "MSG_TEXT_NOT_CP1252": "„%1“ enthält ein Zeichen, das in einer qc-Datei nicht gespeichert "
                           "werden kann. Bitte nur Buchstaben westeuropäischer Sprachen verwenden.",
    "MSG_TEXTURE_PARTS_UNREADABLE": "Diese Modelldateien konnten nicht gelesen werden, ihre "
                                    "Texturen fehlen in der Liste: %1",
    "MSG_TEXTURES_FULL": "Die Modelldateien verwenden mehr als %1 verschiedene Texturen. Nur die "
                         "ersten %1 werden aufgeführt; die übrigen können keine Variationen und "
                         "keine Rendermodes bekommen.",
    "MSG_NO_BITMAPS": "Der Texturenordner „%1“ enthält keine Bitmaps (*.bmp). Bitte wähle zuerst "
                      "im Hauptfenster einen Texturenordner mit Bitmaps.",
    "MSG_EVENTS_FULL": "Diese Animation hat schon %1 Events, mehr kann eine Animation nicht "
                       "aufnehmen. Es wurde kein Event hinzugefügt.",
    "MSG_ORIGIN_NOT_A_NUMBER": "„%1“ ist keine Verschiebung. Bitte gib eine Zahl von -%2 bis %2 "
                               "ein und drücke Enter; die Verschiebung bleibt, wie sie war.",
    "MSG_FINDING_PATH_ANSWERED": "Ein Ordner oder eine Datei war nicht, wo das Skript sagt: das "
                                 "Speichern nennt den oder die, die du gewählt hast",
    "MSG_FINDING_INCLUDE_MISSING": "Eine eingebundene Datei kann nicht geöffnet werden: ihre "
                                   "$include-Zeile bleibt, wie sie steht, und der Compiler hält dort "
                                   "ebenfalls an",
    "MSG_FINDING_INCLUDE_TOO_DEEP": "Ein $include, tiefer verschachtelt als der Compiler liest, oder "
                                    "eines, das sich selbst einbindet: die Zeile bleibt, wie sie steht",
    "MSG_FINDING_INCLUDE_NOT_A_SCRIPT": "Eine eingebundene Datei ist binär oder UTF-16-Text und kein "
                                        "Skript: ihre $include-Zeile bleibt, wie sie steht",
    "MSG_FINDING_MORE_THAN_TEN_TEXTURES": "Die Teile haben mehr als zehn Texturen: die "
                                          "Texturdialoge zeigen die ersten zehn, und die Zeilen der "
                                          "übrigen bleiben, wie sie stehen",
    "MSG_FINDING_COMPILER_REFUSES": "Der Modell-Compiler lehnt das Skript an dieser Zeile ab und "
                                    "baut kein Modell; die Zeile bleibt, wie sie steht",
    "MSG_FINDING_QUOTE_ACROSS_LINES": "Ein Anführungszeichen, das in dieser Zeile beginnt, schließt "
                                      "erst in einer späteren: der Compiler liest die Zeilen "
                                      "dazwischen als einen Namen, und das Speichern fügt dort "
                                      "keine Zeile ein",
    "MSG_FINDING_PLACE": "%1, Zeile %2: %3",
    "MSG_FINDINGS_SAME_MODEL": "Das Speichern dieses Skripts ändert nichts, was der Compiler liest, "
                               "außer dem, was du änderst.",
    "MSG_FINDINGS_MODEL_ONE": "Das Speichern dieses Skripts ändert an 1 Stelle, was der Compiler "
                              "liest.",
    "MSG_FINDINGS_MODEL_MANY": "Das Speichern dieses Skripts ändert an %1 Stellen, was der "
                               "Compiler liest.",
    "MSG_FINDINGS_FIRST": "Die ersten Stellen:",
    "MSG_FINDINGS_MORE": "... und %1 weitere.",
    "MSG_FINDINGS_KEPT": "Das erste Speichern bewahrt das ursprüngliche Skript daneben als „%1“ auf.",
    "MSG_FINDINGS_TITLE": "Was Quarle im Skript gefunden hat",
    "MSG_KEEP_ORIGINAL_FAILED": "Das ursprüngliche Skript kann nicht als „%1“ aufbewahrt werden, darum wurde es nicht überschrieben.",
    "MSG_SAVE_NO_NAME": "Die qc-Datei hat keinen Dateinamen: %1",
    "MSG_SAVE_BROKEN_LINK": "Die qc-Datei ist ein Verweis auf eine Datei, die es nicht gibt: %1",
    "MSG_SAVE_NO_FOLDER": "Den Ordner der qc-Datei gibt es nicht: %1",
    "MSG_SAVE_NOT_A_FILE": "Der Name der qc-Datei gehört zu etwas, das keine Datei ist: %1",
    "MSG_SAVE_WRITE_PROTECTED": "Die qc-Datei ist schreibgeschützt: %1",
    "MSG_SAVE_NO_TEMPORARY": "Neben der qc-Datei konnte keine vorläufige Datei angelegt werden: %1",
    "MSG_SAVE_FOLDER_UNWRITABLE": "In den Ordner der qc-Datei kann nicht geschrieben werden: %1",
    "MSG_SAVE_INCOMPLETE": "Die qc-Datei konnte nicht ganz geschrieben werden (ist der Datenträger voll?): %1",
    "MSG_SAVE_NOT_REPLACED": "Die qc-Datei konnte die alte Datei nicht ersetzen: %1",
    "MSG_OPEN_MISSING": "„%1“ ist nicht zu finden.",
    "MSG_OPEN_FOLDER": "„%1“ ist ein Ordner, keine Datei, und wird nicht gelesen.",
    "MSG_OPEN_SPECIAL": "„%1“ ist keine gewöhnliche Datei (eine Pipe, ein Gerät oder ein "
                        "Socket) und wird nicht gelesen.",
    "MSG_OPEN_TOO_LARGE": "„%1“ ist größer als %2 MB, mehr als eine Datei dieser Art enthält, "
                          "und wird nicht gelesen.",
    "MSG_OPEN_DENIED": "„%1“ lässt sich nicht öffnen: %2.",
    "MSG_OPEN_READ_ERROR": "„%1“ konnte nicht bis zum Ende gelesen werden: %2.",
    "MSG_SYSTEM_DENIED": "der Zugriff wird verweigert",
    "MSG_SYSTEM_DISK_FULL": "der Datenträger ist voll",
    "MSG_SYSTEM_READ_ONLY": "das Laufwerk kann nur gelesen werden",
    "MSG_SYSTEM_NOT_FOUND": "die Datei oder der Ordner existiert nicht",
    "MSG_SYSTEM_IS_FOLDER": "es ist ein Ordner",
    "MSG_SYSTEM_NOT_FOLDER": "ein Teil des Pfades ist kein Ordner",
    "MSG_SYSTEM_NAME_TOO_LONG": "der Name ist zu lang",
    "MSG_SYSTEM_IN_USE": "die Datei wird gerade benutzt",
    "MSG_SYSTEM_IO": "das Laufwerk meldet einen Fehler",
    "MSG_SYSTEM_EXISTS": "eine Datei dieses Namens gibt es schon",
    "MSG_LOAD_PROGRESS_TITLE": "Öffnen",
    "MSG_LOAD_PROGRESS": "%1 wird gelesen ...",
    "MSG_SETTINGS_UNWRITABLE": "Die Einstellungsdatei „%1“ kann nicht geschrieben werden (%2). "
                               "Jetzt geänderte Einstellungen gehen beim Beenden verloren.",
    "MSG_LANGUAGE_BROKEN": "Die Sprachdatei „%1“ ist nicht zu gebrauchen (%2). Stattdessen wird "
                           "„%3“ verwendet.",
    "MSG_LANGUAGE_NO_STRINGS": "ihr fehlen die globalen Texte",
    "MSG_SAVE_SYSTEM_REASON": "Das System meldet: %1",
    "MSG_LANGUAGE_NOT_SAVED": "Die Sprachdatei „%1“ konnte nicht geschrieben werden (%2). Sie "
                              "blieb unverändert.",
    "MSG_LANGUAGE_NAME_INVALID": "Bitte einen Namen für die neue Sprache eingeben, ohne die "
                                 "Zeichen \\ / : * ? \" < > |.",
    "MSG_LANGUAGE_NAME_IN_USE": "„%1“ ist die Sprachdatei in Gebrauch. Bitte einen anderen Namen "
                                "für die neue Sprache wählen.",
    "MSG_ANIMATIONS_PARTLY_ADDED": "Eine Sequenzgruppe fasst höchstens %1 Animationen. "
                                   "Hinzugefügt: %2; nicht hinzugefügt: %3.",
    "MSG_NO_DIRECTIVE": "„%1“ enthält keine Anweisung: Die Datei ist kein Modellskript oder leer. "
                        "Quarle hat nichts daraus gelesen.",
    "MSG_INCLUDES_WRITTEN_IN": "Du hast geändert, was diese eingebundenen Dateien enthalten, darum "
                               "hat das Speichern ihre Zeilen anstelle ihrer $include-Zeilen ins "
                               "Skript geschrieben; die Dateien selbst bleiben, wie sie waren: %1",
    "MSG_SAVE_NAME_QUOTE": "„%1“ enthält ein doppeltes Anführungszeichen, das ein Modellskript "
                           "nicht nennen kann. Bitte einen Namen ohne dieses wählen.",
    "MSG_TOOLS_FIRST_START": "Quarle hat keinen Modell-Compiler (studiomdl) gefunden, den es "
                             "starten kann; versucht wurde „%1“. Ein Modell lässt sich "
                             "kompilieren, sobald der Pfad des Compilers in den Einstellungen "
                             "steht. Die Einstellungen jetzt öffnen?",
    "MSG_TOOL_STARTABLE": "Gefunden und startbar: %1",
    "MSG_TOOL_THROUGH_WINE": "Gefunden, ein Windows-Programm; es läuft über wine: %1",
    "MSG_TOOL_MISSING": "Nicht gefunden: %1",
    "MSG_TOOL_NOT_EXECUTABLE": "Gefunden, darf aber nicht ausgeführt werden: %1",
    "MSG_TOOL_NO_WINE": "Ein Windows-Programm, und wine steht nicht im Suchpfad: %1",
    "MSG_CHECK_EMPTY_BODYGROUP": "Fehler: Die Bodygruppe „%1“ hat keine Teile; der Compiler schreibt sie, und das Spiel teilt beim Zeichnen durch die Zahl ihrer Teile.",
    "MSG_CHECK_ANIMATION_NO_NAME": "Warnung: Die Animation aus der Datei %1.smd hat keinen Namen; der Compiler nimmt sie, aber das Spiel findet sie nicht über ihren Namen.",
    "MSG_CHECK_AT": "%1, Zeile %2: %3",
    "MSG_CHECK_SCRIPT_UNREADABLE": "Das Skript „%1“ kann nicht gelesen werden.",
    "MSG_CHECK_LINE_INCOMPLETE": "%1 braucht mehr in dieser Zeile; der Compiler bricht hier ab.",
    "MSG_CHECK_INCLUDE_MISSING": "Die eingebundene Datei „%1“ wurde nicht gefunden; der Compiler bricht hier ab.",
    "MSG_CHECK_INCLUDE_TOO_DEEP": "„%1“ ist tiefer eingebunden, als der Compiler folgt; er bricht hier ab.",
    "MSG_CHECK_TOKEN_TOO_LONG": "Ein Wort mit mehr als %1 Zeichen; der Compiler bricht hier ab.",
    "MSG_CHECK_BAD_COMMAND": "Der Compiler kennt die Anweisung %1 nicht (er unterscheidet Anweisungen Buchstabe für Buchstabe) und bricht hier ab.",
    "MSG_CHECK_TWO_CD": "Ein zweites $cd; der Compiler nimmt nur eines und bricht hier ab.",
    "MSG_CHECK_TABLE_FULL": "Mehr, als der Compiler fassen kann: %1 (höchstens %2); er bricht hier ab.",
    "MSG_CHECK_TABLE_OVERRUN": "Mehr, als die Tabelle des Compilers fasst: %1 (höchstens %2); den Rest schreibt er hinter ihr Ende, und das Modell kann kaputt herauskommen.",
    "MSG_CHECK_NAME_TOO_LONG": "„%1“ ist länger als die %2 Zeichen, für die das Modell Platz hat: Der Compiler schreibt den Namen ohne sein Ende, und das Spiel liest in das Folgende weiter.",
    "MSG_CHECK_FILE_NAME_TOO_LONG": "„%1“ ist länger als die %2 Zeichen, die der Compiler von einem Dateinamen behält: Er sucht „%3“.",
    "MSG_CHECK_CONTROLLER_TYPE_UNKNOWN": "Der Compiler kennt den Controller-Typ %1 nicht und lässt den Controller weg.",
    "MSG_CHECK_CONTROLLER_TYPE_MOTION": "Ein Controller vom Typ %1: Der Compiler schreibt nur X, Y, Z, XR, YR und ZR und bricht ab, wenn er ihn schreiben soll.",
    "MSG_CHECK_BLOCK_SWALLOWS": "%2 steht im Block von %1: Der Compiler liest es als Wort des Blocks, nicht als Anweisung.",
    "MSG_CHECK_BLOCK_UNENDED": "Der Block von %1 wird nicht geschlossen, bevor das Skript endet: Der Compiler liest über das Ende hinaus und stürzt ab.",
    "MSG_CHECK_TEXTUREGROUP_FIRST": "$texturegroup vor jedem Teil: Der Compiler nimmt es nur hinter den Teilen und bricht hier ab.",
    "MSG_CHECK_RENDERMODE_OTHER": "Der Render-Modus %1: Der Compiler des Half-Life SDK nimmt nur additive und masked und bricht hier ab; spätere Compiler kennen mehr Modi.",
    "MSG_CHECK_MISSING_OPEN_BRACE": "Die Sequenz „%1“ schließt eine Klammer, die sie nicht geöffnet hat; der Compiler bricht hier ab.",
    "MSG_CHECK_NO_ANIMATION_FILE": "Die Sequenz „%1“ nennt keine Datei, die der Compiler als Animation liest; er bricht hier ab.",
    "MSG_CHECK_FILE_READ_AS_OPTION": "„%1“ wird als Option %2 gelesen, nicht als Datei: Der Compiler erkennt seine Optionen an den ersten Buchstaben.",
    "MSG_CHECK_UNKNOWN_ACTIVITY": "%1 ist keine Aktivität, die der Compiler kennt; er liest es als Animationsdatei „%2“, die es nicht gibt.",
    "MSG_CHECK_ACTIVITY_NO_WEIGHT": "Hinter der Aktivität %1 steht kein Gewicht; der Compiler bricht hier ab.",
    "MSG_CHECK_ACTIVITY_WEIGHT_WORD": "Die Aktivität %1 nimmt „%2“ als Gewicht: Der Compiler liest es als Zahl, nicht als das, was es ist.",
    "MSG_CHECK_OUTPUT_FOLDER": "Den Ordner des Modells „%1“ gibt es nicht; der Compiler kann das Modell nicht schreiben.",
    "MSG_CHECK_EVENT_OUTSIDE": "Das Event %1 der Sequenz „%2“ liegt auf Frame %3, außerhalb ihrer Frames %4 bis %5; der Compiler verlegt es auf Frame %6.",
    "MSG_CHECK_SMD_MISSING": "Die Modell- oder Animationsdatei „%1“ wurde nicht gefunden.",
    "MSG_CHECK_FILE_OTHER_CASE": "%1 Dateien gibt es nur mit anderer Groß- und Kleinschreibung, als das Skript sie schreibt; der Compiler findet sie nur, wo Dateinamen diese nicht unterscheiden (Windows, wine): %2.",
    "MSG_CHECK_SMD_UNREADABLE": "„%1“ kann nicht gelesen werden.",
    "MSG_CHECK_SMD_VERSION": "„%1“, Zeile %2: Version %3; der Compiler liest nur Version 1 und bricht dort ab.",
    "MSG_CHECK_SMD_NODES_CUT": "„%1“ endet mitten in den Knochen (nodes); der Compiler bricht dort ab.",
    "MSG_CHECK_SMD_INDEX_RANGE": "„%1“, Zeile %2: Der Knochenindex %3 liegt außerhalb von 0 bis 511, jenseits der Tabellen des Compilers.",
    "MSG_CHECK_SMD_BAD_LINE": "„%1“, Zeile %2: Ein Eckpunkt, der nicht aus neun Zahlen besteht; der Compiler bricht dort ab.",
    "MSG_CHECK_SMD_CORNER_BONE": "„%1“, Zeile %2: Ein Eckpunkt am Knochenindex %3, während die Knochenliste %4 Knochen nennt; der Compiler bricht dort ab.",
    "MSG_CHECK_SMD_SWALLOWED": "„%1“, Zeile %2: Das Skelett ist nicht zu Ende, wo die Dreiecke beginnen; der Compiler liest sie als Stellungen, und das Teil hat keine Dreiecke.",
    "MSG_CHECK_SMD_BAD_POSE": "„%1“, Zeile %2: weder eine Stellung aus sieben Zahlen noch time oder end; der Compiler bricht dort ab.",
    "MSG_CHECK_SMD_CUT_SHORT": "„%1“ endet mitten in einem Skelett; der Compiler bricht dort ab.",
    "MSG_CHECK_SMD_POSE_BONE": "„%1“, Zeile %2: Eine Stellung des Knochenindex %3, den die Knochenliste davor nicht nennt; der Compiler stürzt ab.",
    "MSG_CHECK_SMD_FRAME_RANGE": "„%1“, Zeile %2: Frame %3 liegt außerhalb von 0 bis 2047: Der Compiler schreibt ihn hinter seine Tabellen, was ihn abstürzen lassen oder die Animation verderben kann.",
    "MSG_CHECK_SMD_NO_FRAME": "„%1“: Der Compiler findet darin keinen Frame von %2 bis %3 und stürzt ab.",
    "MSG_CHECK_SMD_NODES_AGAIN": "„%1“, Zeile %2: Eine Leerzeile hinter dem Ende der Knochenliste lässt den Compiler noch einmal Knochen lesen, und er behält nur den ersten.",
    "MSG_CHECK_SMD_NODES_TWICE": "„%1“, Zeile %2: Ein zweiter Block mit Knochen; der Compiler nimmt dessen Knochen anstelle derer des ersten Blocks.",
    "MSG_CHECK_SMD_SKIPPED": "„%1“, Zeile %2: Der Compiler kennt „%3“ nicht und überspringt jede Zeile bis zur nächsten, die mit end beginnt, darunter einen Block.",
    "MSG_CHECK_SMD_REPEATED": "(Die Leerzeile %1 ließ den Compiler den Block davor noch einmal lesen.)",
    "MSG_CHECK_PARENT_CLASH": "„%1“: Der Knochen „%2“ hat den Elternknochen „%3“, vorher hatte er „%4“; einen Knochen, dessen Elternknochen wechselt, lehnt der Compiler ab.",
    "MSG_CHECK_ANIM_PARENT_CLASH": "„%1“: Der Knochen „%2“ hat den Elternknochen „%3“, im Modell „%4“; der Compiler lehnt die Sequenz ab.",
    "MSG_CHECK_TOO_MANY_BONES": "Das Modell verwendet %1 Knochen (die, an denen ein Eckpunkt hängt, und ihre Eltern); der Compiler nimmt weniger als %2.",
    "MSG_CHECK_LINK_BONE": "%1 nennt den Knochen „%2“, den das Modell nicht behält: Kein Eckpunkt hängt an ihm oder an einem Knochen darunter.",
    "MSG_CHECK_TOO_MANY_VERTICES": "„%1“ hat nach dem Zusammenfassen durch den Compiler %2 Eckpunkte; ein Teil darf höchstens %3 haben.",
    "MSG_CHECK_TOO_MANY_NORMALS": "„%1“ hat nach dem Zusammenfassen durch den Compiler %2 Normalen; ein Teil darf höchstens %3 haben.",
    "MSG_CHECK_TOO_MANY_TRIANGLES": "„%1“ hat %2 Dreiecke; ein Teil darf höchstens %3 haben.",
    "MSG_CHECK_PART_TEXTURES": "„%1“ verwendet %2 Texturen; ein Teil darf höchstens %3 verwenden.",
    "MSG_CHECK_NEAR_LIMIT": "„%1“ kommt nach dem Zusammenfassen durch den Compiler auf %2 %4, auf %5 genau, und ein Teil darf höchstens %3 haben: Der Compiler lehnt es vielleicht ab.",
    "MSG_CHECK_WORD_VERTICES": "Eckpunkte",
    "MSG_CHECK_WORD_NORMALS": "Normalen",
    "MSG_CHECK_TEXTURE_NOT_BMP": "%1 verwendet die Textur „%2“, die keine .bmp-Datei ist; der Compiler nimmt nur solche.",
    "MSG_CHECK_TEXTURE_MISSING": "Die Textur „%2“ von %1 liegt in keinem der Texturordner des Compilers: %3.",
    "MSG_CHECK_TOO_MANY_TEXTURES": "Das Modell hat %1 Texturen; die Tabelle des Compilers fasst %2, den Rest schreibt er hinter ihr Ende.",
    "MSG_CHECK_MODEL_BUFFER": "Allein die Texturen ergeben %1 Bytes, mehr als die %2, in die der Compiler eine Modelldatei schreibt: Er schreibt über das Ende seines Puffers hinaus und kann abstürzen oder das Modell verderben.",
    "MSG_CHECK_BMP_NOT_BITMAP": "Die Textur „%1“ ist zu kurz für die Köpfe einer Bitmap.",
    "MSG_CHECK_BMP_RESERVED": "Die Textur „%1“ hat etwas in den reservierten Feldern ihres Dateikopfs; der Compiler lehnt sie ab.",
    "MSG_CHECK_BMP_HEADER": "Die Textur „%1“ hat einen Info-Kopf von %2 Byte mit %3 Ebenen; der Compiler nimmt nur den einfachen mit 40 Byte und einer Ebene (als Windows-Bitmap ohne Farbrauminformationen speichern).",
    "MSG_CHECK_BMP_DEPTH": "Die Textur „%1“ hat %2 Bit pro Pixel; der Compiler nimmt nur 8 Bit mit Palette (256 Farben).",
    "MSG_CHECK_BMP_COMPRESSED": "Die Textur „%1“ ist komprimiert (RLE); der Compiler nimmt nur unkomprimierte Bitmaps.",
    "MSG_CHECK_BMP_PALETTE": "Die Textur „%1“ nennt %2 Palettenfarben; der Compiler hat Platz für 256.",
    "MSG_CHECK_BMP_CUT_SHORT": "Die Textur „%1“ ist unvollständig: Palette oder Pixel fehlen in der Datei.",
    "MSG_CHECK_BMP_SIZE_FIELD": "Die Textur „%1“ gibt ihre Dateigröße mit %2 Byte an; der Compiler liest die Pixel bis dorthin, und die Datei hat %3.",
    "MSG_CHECK_BMP_TOP_DOWN": "Die Textur „%1“ speichert ihre Zeilen von oben (eine negative Höhe); der Compiler stürzt daran ab.",
    "MSG_CHECK_BMP_EMPTY": "Die Textur „%1“ hat %2 × %3 Pixel; bei einer leeren Seite wird der Compiler nie fertig.",
    "MSG_CHECK_BMP_NOT_POWER_OF_TWO": "%1 Texturen haben eine Seite, die keine Zweierpotenz ist (64, 128, 256, ...); das Spiel skaliert sie, und sie können unscharf wirken: %2.",
    "MSG_CHECK_TEXTURE_TOO_LARGE": "Die Textur „%1“ ergibt so, wie die Modelle sie verwenden, eine Haut von %2 × %3 Pixeln; mit Palette ist das mehr als die 640 × 480 Byte des Compilers aus dem Half-Life SDK (spätere Compiler nehmen mehr).",
    "MSG_CHECK_SEQUENCE_LARGE": "Die Sequenz „%1“ kommt auf %2 Byte Animationsdaten; mehr als 65535 lehnt der Compiler ab.",
    "MSG_CHECK_SEQUENCE_MAY_BE_LARGE": "Die Sequenz „%1“ kommt auf %2 Byte Animationsdaten, auf %3 genau, nahe an den 65535, die der Compiler nimmt: Er lehnt sie vielleicht ab.",
    "MSG_UNSAVED_CHANGES": "Die Änderungen an %1 sind noch nicht gespeichert. Jetzt speichern?",
    "MSG_UNTITLED": "Unbenannt",
    "MSG_TEXTURE_FOLDER_EMPTY": "Der Texturenordner „%1“ enthält noch keine Bitmaps (*.bmp).",
    "MSG_ANIMWIZ_DEFAULT_NAME": "Name der Animation",
    "MSG_PREVIEW_NO_GL": "OpenGL steht hier nicht zur Verfügung, die Vorschau kann das Modell "
                         "nicht zeichnen.",
    "MSG_PREVIEW_NO_PARTS": "Kein Referenzteil zum Zeigen: füge eines auf der Seite der "
                            "Modelldateien hinzu.",
    "MSG_PREVIEW_PARTS_MISSING": "Nicht im Modellordner: %1",
    "MSG_PREVIEW_TEXTURES_MISSING": "Als Schachbrett gezeichnet, nicht im Texturenordner: %1",
    "MSG_PREVIEW_BIND_POSE": "%1 Dreiecke; keine Animation gewählt",
    "MSG_PREVIEW_FRAME": "%1 Dreiecke; %2: Bild %3 von %4",
    "MSG_MDL_UNREADABLE": "Die Modelldatei kann nicht gelesen werden.",
    "MSG_MDL_NOT_STUDIO": "Das ist kein Studio-Modell: die Datei beginnt mit „%1“, wo „IDST“ "
                          "stehen sollte.",
    "MSG_MDL_VERSION": "Das Studio-Modell hat die Version %1; gelesen wird nur Version 10.",
    "MSG_MDL_BEYOND_END": "%1 reichen über das Ende der Datei hinaus (Bytes %2 bis %3 von %4).",
    "MSG_MDL_BAD_COUNT": "%1: die Anzahl %2 ist ungültig.",
    "MSG_MDL_BAD_INDEX": "%1: %2 liegt nicht im Bereich (%3 bis %4).",
    "MSG_MDL_BAD_ANIMATION": "%1: die Animationswerte sind fehlerhaft.",
    "MSG_MDL_ANIMATION_TOO_LARGE": "Die Animationsdaten sind zu groß, um sie zu prüfen (mehr als "
                                   "%1 Abschnitte).",
    "MSG_MDL_IN_FILE": "%1: %2",
    "MSG_MDL_GROUP_MISSING": "Die Datei %1 der Sequenzgruppe fehlt; ihre Sequenzen stehen still.",
    "MSG_MDL_TEXTURES_MISSING": "Die Texturdatei %1 fehlt; das Modell wird ohne seine Texturen "
                                "gezeichnet.",
    "MSG_OPEN_COMPILED_TITLE": "Kompiliertes Modell öffnen",
    "MSG_COMPILED_UNREADABLE": "%1 kann nicht gezeigt werden: %2",
    "MSG_COMPILED_AT_REST": "%1 Dreiecke; die Knochen in Ruhe",
    "MSG_OVERLAY_DISTANCE": "kompiliertes Skelett (%1): größter Abstand %2 bei „%3“",
    "MSG_OVERLAY_NO_SEQUENCE": "das kompilierte Modell hat keine Sequenz „%1“",
    "MSG_OVERLAY_NO_MODEL": "kein kompiliertes Modell zum Vergleichen: %1",
    "MSG_OVERLAY_ONLY_COMPILED": "Knochen nur im kompilierten Modell: %1",
    "MSG_OVERLAY_ONLY_SOURCES": "Knochen mit Eckpunkten, die dem kompilierten Modell fehlen: %1",
    "MSG_OVERLAY_LOOP_END": "am Ende einer Schleife wiederholt das kompilierte Modell sein "
                            "erstes Bild",
    "MSG_PREVIEW_PAUSE": "Anhalten",
}

# The texts of the global strings, in the order of the key table (index 1 to
# 93). Pieces of one sentence (_PART1, _PART2, ...) are joined by the code
# with a blank and a name or a path between them.
GLOBAL_STRINGS = [
    ("IDS_VERSION", "Version", "Version"),
    ("IDS_NONE", "keiner", "none"),
    ("IDS_TEXTUREPATH", "Texturenpfad", "Texture path"),
    ("IDS_MODELFILEPATH", "Modell-Dateienpfad", "Model files path"),
    ("IDS_REFERENCEMODEL", "Referenzmodell", "Reference model"),
    ("IDS_SCALE", "Maßstab", "Scale"),
    ("IDS_YES", "Ja", "Yes"),
    ("IDS_NO", "Nein", "No"),
    ("IDS_EYES", "Augen", "Eyes"),
    ("IDS_ANIMATION", "Animation", "Animation"),
    ("IDS_FILE", "Datei", "File"),
    ("IDS_NONES", "keine", "none"),
    ("IDS_ANIMATIONID", "Animations-ID", "Activity"),
    ("IDS_ON", "an", "on"),
    ("IDS_OFF", "aus", "off"),
    ("IDS_LXPARAMETER", "LX-Parameter", "LX parameter"),
    ("IDS_FPS", "Fps", "Fps"),
    ("IDS_TO", "bis", "to"),
    ("IDS_ALL", "alle", "all"),
    ("IDS_SHOWPICTURES", "Angezeigte Frames", "Frames shown"),
    ("IDS_LOOP", "Schleife", "Loop"),
    ("IDS_COMPILE", "Kompiliere", "Compiling"),
    ("IDS_CHECKMODELINFO", "Überprüfe die Modelldaten...", "Checking the model data..."),
    ("IDS_COMPILEMODEL", "Kompiliere das Modell...", "Compiling the model..."),
    ("IDS_CANTCOMPILE", "Das Modell kann wegen dieser Fehler nicht kompiliert werden.",
     "The model cannot be compiled because of these errors."),
    ("IDS_DONE", "Fertig", "Done"),
    ("IDS_ERRORS", "Fehler", "errors"),
    ("IDS_ERROR_STUDIOMDLPATH",
     "Fehler: Es ist kein Compiler (studiomdl.exe) angegeben. Trage ihn unter Einstellungen - "
     "Allgemeine Einstellungen ein.",
     "Error: no compiler (studiomdl.exe) is set. Choose it under Settings - General settings."),
    ("IDS_ERROR_STUDIOMDL",
     "Fehler: Der Compiler (studiomdl.exe) wurde nicht gefunden. Prüfe seinen Pfad unter "
     "Einstellungen - Allgemeine Einstellungen.",
     "Error: the compiler (studiomdl.exe) cannot be found. Check its path under Settings - "
     "General settings."),
    ("IDS_WARNING_SPACES_PART1", "Warnung: Der Pfad des Compilers enthält Leerzeichen.",
     "Warning: the path of the compiler contains blanks."),
    ("IDS_WARNING_SPACES_PART2",
     "Der Compiler startet dann womöglich nicht; lege ihn besser in einen Ordner ohne "
     "Leerzeichen.",
     "The compiler may then fail to start; better move it to a folder without blanks."),
    ("IDS_WARNING_TEXTUREPATH",
     "Warnung: Es ist kein Texturenpfad angegeben. Der Modell-Dateienpfad wird verwendet.",
     "Warning: no texture path is set. The model files path is used instead."),
    ("IDS_ERROR_MODELPATH", "Fehler: Es ist kein Modell-Dateienpfad angegeben.",
     "Error: no model files path is set."),
    ("IDS_ERROR_REFERENCEMODEL", "Fehler: Die Datei des Referenzmodells wurde nicht gefunden.",
     "Error: the file of the reference model cannot be found."),
    ("IDS_WARNING_BODYGROUP_PART1", "Warnung: Die Bodygruppe", "Warning: the body group"),
    ("IDS_WARNING_BODYGROUP_PART2", "enthält keine Teile.", "has no parts."),
    ("IDS_ERROR_NOREFERENCEMODEL",
     "Fehler: Das Modell hat kein Referenzmodell. Füge einer Bodygruppe mindestens eine "
     "smd-Datei hinzu.",
     "Error: the model has no reference model. Add at least one .smd file to a body group."),
    ("IDS_WARNING_IDLEANIMATION",
     'Warnung: Das Modell hat keine Animation. Eine Animation "idle" aus dem Referenzmodell '
     'wird angefügt.',
     'Warning: the model has no animation. An animation "idle" made from the reference model '
     'is added.'),
    ("IDS_ERROR_ANIMATIONNAME_PART1", "Fehler: Die Animation aus der Datei",
     "Error: the animation from the file"),
    ("IDS_ERROR_ANIMATIONNAME_PART2", ".smd hat keinen Namen.", ".smd has no name."),
    ("IDS_ERROR_DOUBLEANIMATIONNAME_PART1", "Fehler: Die Animationen",
     "Error: the animations"),
    ("IDS_ERROR_DOUBLEANIMATIONNAME_PART2", "und", "and"),
    ("IDS_ERROR_DOUBLEANIMATIONNAME_PART3", "haben denselben Namen.", "have the same name."),
    ("IDS_WARNING_FPS_PART1", "Warnung: Die Animation", "Warning: the animation"),
    ("IDS_WARNING_FPS_PART2", "hat eine Geschwindigkeit von 0 fps.",
     "has a speed of 0 fps."),
    ("IDS_WARNING_MISSINGNUMBER",
     "Warnung: Der Anim.-ID fehlt die Gewichtung (eine Zahl am Ende) in der Animation",
     "Warning: the activity has no weight (a number at its end) in the animation"),
    ("IDS_ERROR_STARTFRAME_PART1", "Fehler: Bei der Animation aus der Datei",
     "Error: in the animation from the file"),
    ("IDS_ERROR_STARTFRAME_PART2", ".smd liegt der Startframe hinter dem Endframe.",
     ".smd the start frame comes after the end frame."),
    ("IDS_CANTFINDFILE_PART1", "Die Datei", "The file"),
    ("IDS_CANTFINDFILE_PART2",
     "wurde nicht gefunden und wird aus der Liste der letzten Dateien entfernt.",
     "cannot be found. It is removed from the list of recent files."),
    ("IDS_ERROR", "Fehler", "Error"),
    ("IDS_DUMMI", "(nicht verwendet)", "(not used)"),
    ("IDS_OPEN", "Öffnen", "Open"),
    ("IDS_FILE2", "Datei", "File"),
    ("IDS_SAVEAS", "Speichern unter", "Save as"),
    ("IDS_TIP_TEXTUREPATH",
     "Hallo! Zuerst braucht das Modell seinen Texturenpfad. Klicke hier und wähle eine "
     "Bitmap in dem Ordner, in dem die Texturen liegen.",
     "Hello! First the model needs its texture path. Click here and pick any bitmap in the "
     "folder that holds the textures."),
    ("IDS_TIP_MODELPATH",
     "Jetzt der Modell-Dateienpfad: Klicke hier und wähle eine smd-Datei in dem Ordner, in "
     "dem die smd-Dateien des Modells liegen.",
     "Now the model files path: click here and pick any .smd file in the folder that holds "
     "the .smd files of the model."),
    ("IDS_TIP_REFERENCE",
     "Füge der Bodygruppe das Referenzmodell hinzu: Markiere seine smd-Datei in der Liste "
     "und klicke auf den Pfeil.",
     "Add the reference model to the body group: select its .smd file in the list and click "
     "the arrow."),
    ("IDS_TIP_CHANGETOANIMATION",
     "Die Modelldateien sind fertig. Wechsle jetzt auf diese Seite, um die Animationen "
     "festzulegen.",
     "The model files are done. Now switch to this page to set up the animations."),
    ("IDS_TIP_ADDANIMATION",
     'Markiere die Animationsdateien in der Liste und füge sie mit diesem Pfeil hinzu. Mit '
     '"Erweitert" stellst du jede Animation genauer ein.',
     'Select the animation files in the list and add them with this arrow. "Advanced" sets '
     'up each animation in detail.'),
    ("IDS_TIP_COMPILE",
     "Alles bereit! Klicke hier, um das Modell zu speichern und zu erstellen.",
     "All set! Click here to save the script and build the model."),
    ("IDS_EVENT_PLAYERDEAD", "Spieler ist tot", "Player is dead"),
    ("IDS_EVENT_UNINTERRUPTIBLESEQUENCE", "Sequenz kann nicht unterbrochen werden",
     "Sequence cannot be interrupted"),
    ("IDS_EVENT_INTERRUPTIBLESEQUENCE", "Sequenz kann unterbrochen werden",
     "Sequence can be interrupted"),
    ("IDS_EVENT_FIRETRIGGER", "Löst einen Trigger aus (Parameter: Zielname)",
     "Fires a trigger (parameter: target name)"),
    ("IDS_EVENT_PLAYWAV", "Spielt eine WAV-Datei ab (Parameter: Sounddatei)",
     "Plays a WAV file (parameter: sound file)"),
    ("IDS_EVENT_PLAYSENTENCE", "Spricht einen Satz (Parameter: Satzname)",
     "Speaks a sentence (parameter: sentence name)"),
    ("IDS_EVENT_FREEZEPLAYER", "Friert den Spieler ein", "Freezes the player"),
    ("IDS_EVENT_NEXTANIMATION", "Geht zur nächsten Animation über",
     "Goes on to the next animation"),
    ("IDS_EVENT_PLAYWAVINVOICE", "Spielt eine WAV-Datei als Stimme ab (Parameter: Sounddatei)",
     "Plays a WAV file as the voice (parameter: sound file)"),
    ("IDS_EVENT_RANDOMSENTENCE", "Spricht einen zufälligen Satz (Parameter: Satzgruppe)",
     "Speaks a random sentence (parameter: sentence group)"),
    ("IDS_EVENT_PLAYERALIVE", "Spieler lebt", "Player is alive"),
    ("IDS_EVENT_MONSTERDROPSLIGHTBODY", "Monster lässt einen leichten Körper fallen",
     "Monster drops a light body"),
    ("IDS_EVENT_MONSTERDROPSHEAVYBODY", "Monster lässt einen schweren Körper fallen",
     "Monster drops a heavy body"),
    ("IDS_EVENT_MONSTERPLAYSSWINGSOUND", "Monster spielt ein Schwunggeräusch ab",
     "Monster plays a swing sound"),
    ("IDS_EVENT_MONSTERTURNED180", "Monster hat sich um 180 Grad gedreht",
     "Monster has turned 180 degrees"),
    ("IDS_EVENT_MUZZLEFLASHONATTACHMENT0", "Mündungsfeuer an Attachment 0",
     "Muzzle flash at attachment 0"),
    ("IDS_EVENT_SPARKONATTACHMENT", "Funken an einem Attachment", "Sparks at an attachment"),
    ("IDS_EVENT_EMITASOUND", "Gibt einen Sound aus (Parameter: Sounddatei)",
     "Emits a sound (parameter: sound file)"),
    ("IDS_EVENT_MUZZLEFLASHONATTACHMENT1", "Mündungsfeuer an Attachment 1",
     "Muzzle flash at attachment 1"),
    ("IDS_EVENT_MUZZLEFLASHONATTACHMENT2", "Mündungsfeuer an Attachment 2",
     "Muzzle flash at attachment 2"),
    ("IDS_EVENT_MUZZLEFLASHONATTACHMENT3", "Mündungsfeuer an Attachment 3",
     "Muzzle flash at attachment 3"),
    ("IDS_EVENT_EJECTSHELLFROMATTACHMENT", "Wirft eine Patronenhülse am Attachment aus",
     "Ejects a shell at an attachment"),
    ("IDS_MODELPATH", "Modellpfad", "Model path"),
    ("IDS_ANIMATIONFILES", "Animationsdateien", "Animation files"),
    ("IDS_MSGBOX_CANTFINDPATH_PART1", "Der Pfad", "The path"),
    ("IDS_MSGBOX_CANTFINDPATH_PART2",
     "wurde nicht gefunden. Wähle im folgenden Dialog eine beliebige Datei im richtigen "
     "Ordner.",
     "cannot be found. In the next dialog, pick any file in the right folder."),
    ("IDS_MSGBOX_CANTFINDPATH_TITEL", "Pfad nicht gefunden", "Path not found"),
    ("IDS_MAINFRM_ONEMODELFILE", "Modelldatei", "model file"),
    ("IDS_MAINFRM_MULTIPLEMODELFILES", "Modelldateien", "model files"),
    ("IDS_MODELNAME", "Modellname (Ordner der mdl-Datei)", "Model name (folder of the .mdl file)"),
    ("IDS_INCLUDEFILE", "Include-Datei", "Include file"),
    ("IDS_VERYOLD",
     "Diese Sprachdatei ist sehr alt und passt nicht mehr zu dieser Version von Quarle.",
     "This language file is very old and no longer fits this version of Quarle."),
]


def key_table():
    """The IDS_ keys in their fixed order, as the program holds them."""
    text = KEY_TABLE.read_text(encoding="utf-8")
    table = text[text.index("IdsKeyTable"):]
    return re.findall(r'"(IDS_[A-Z0-9_]+)"', table)


def message_table():
    """(key, English text) of every message, in the program's order."""
    text = MESSAGE_TABLE.read_text(encoding="utf-8")
    table = text[text.index("MessageTable{{"):text.index("}};")]
    rows = re.findall(r'\{(MSG_\w+), "(MSG_\w+)",((?:\s*"(?:[^"\\]|\\.)*")+)\}', table)
    messages = []
    for name, key, pieces in rows:
        if name != key:
            sys.exit(f"generate.py: {name} has the key {key}")
        english = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', pieces))
        messages.append((key, re.sub(r"\\(.)", r"\1", english)))
    return messages


def messages():
    """(key, German, English) of every message."""
    return [(key, GERMAN_MESSAGES.get(key), en) for key, en in message_table()]


def read_form_texts(path):
    """{form: [(key, caption, tip), ...]} of the dump, in its order; NA where
    the control doesn't have the property."""
    escapes = {"t": "\t", "n": "\n", "r": "\r", "\\": "\\"}

    def text(field):
        if field == NOT_AVAILABLE:
            return NA
        return re.sub(r"\\(.)", lambda m: escapes[m.group(1)], field)

    forms = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        fields = line.split("\t")
        if len(fields) != 4:
            sys.exit(f"generate.py: {path.name}: not form, control, caption, tool tip: {line!r}")
        form, key, caption, tip = fields
        forms.setdefault(form, []).append((key, text(caption), text(tip)))
    return forms


def form_sections(form_texts):
    """(form, (German, English title), [(key, captions, tips), ...]) of every
    form: the German from the dump and GERMAN_DIFFERENCES, the English from
    FORMS. The forms and their order are those of the dump."""
    missing = [name for name in form_texts if name not in FORMS]
    if missing:
        sys.exit(f"generate.py: FORMS gives no English for {missing}")
    unknown = [name for name in FORMS if name not in form_texts]
    if unknown:
        sys.exit(f"generate.py: FORMS names forms that forms.tsv does not hold: {unknown}")
    used = set()

    def german(form, key, prop, designed):
        if (form, key, prop) in GERMAN_DIFFERENCES:
            used.add((form, key, prop))
            if designed == GERMAN_DIFFERENCES[(form, key, prop)]:
                sys.exit(f"generate.py: {form} {key}: the {prop} is the designed one, "
                         "not a difference")
            return GERMAN_DIFFERENCES[(form, key, prop)]
        return designed

    sections = []
    for name in form_texts:
        title, rows = FORMS[name]
        designed = {key: (caption, tip) for key, caption, tip in form_texts[name]}
        entries = []
        for key, caption, tip in rows:
            if key not in designed:
                sys.exit(f"generate.py: {name} has no control {key}")
            de_caption, de_tip = designed[key]
            if (caption is NA) != (de_caption is NA) or (tip is NA) != (de_tip is NA):
                sys.exit(f"generate.py: {name} {key}: give a text for each property the "
                         "control has, and none for the others")
            entries.append((key, (german(name, key, "caption", de_caption), caption),
                            (german(name, key, "tip", de_tip), tip)))
        named = {key for key, _, _ in rows}
        for key, (caption, tip) in designed.items():
            if key != "Titel" and (caption or tip) and key not in named:
                sys.exit(f"generate.py: {name} {key} has a designed text but no English one")
        de_title = german(name, "Titel", "caption", designed["Titel"][0])
        sections.append((name, (de_title, title), entries))
    if used != set(GERMAN_DIFFERENCES):
        sys.exit(f"generate.py: GERMAN_DIFFERENCES names what no form has: "
                 f"{sorted(set(GERMAN_DIFFERENCES) - used)}")
    return sections


def check_tables(sections):
    keys = key_table()
    table = message_table()
    if not table or {k for k, _ in table} != set(GERMAN_MESSAGES):
        sys.exit("generate.py: the German messages do not follow MessageTexts.h")
    for key, de, en in messages():
        for text in (de, en):
            if not text or text != text.strip(" ") or "\n" in text:
                sys.exit(f"generate.py: {key} must be one line without outer blanks: {text!r}")
        placeholders = sorted(set(re.findall(r"%[1-9]", en)))
        if sorted(set(re.findall(r"%[1-9]", de))) != placeholders:
            sys.exit(f"generate.py: {key} does not have the placeholders {placeholders}")
    if len(keys) != 94 or [k for k, _, _ in GLOBAL_STRINGS] != keys[1:]:
        sys.exit("generate.py: the global strings do not follow the key table")
    for name, titles, rows in sections:
        seen = set()
        for key, captions, tips in rows:
            if key.upper() in seen:
                sys.exit(f"generate.py: {name} names {key} twice")
            seen.add(key.upper())
            for text in (*captions, *tips):
                if text is not NA and (text != text.strip(" ") or "\n" in text):
                    sys.exit(f"generate.py: {name} {key}: a value cannot keep outer blanks or "
                             f"a line break: {text!r}")
    for _, de, en in GLOBAL_STRINGS:
        for text in (de, en):
            if text != text.strip(" ") or "\n" in text:
                sys.exit(f"generate.py: a value cannot keep outer blanks or a line break: {text!r}")


def value(text):
    return NOT_AVAILABLE if text is NA else text


def lines_for(sections, column, description, count_key):
    out = [f"Version = {VERSION}", f"InfoForThis = {description}"]
    for name, titles, rows in sections:
        out.append(name)
        out.append(f"Titel = {titles[column]}")
        for key, captions, tips in rows:
            out.append(f"{key} = {value(captions[column])}")
            out.append(f"{key} = {value(tips[column])}")
        out.append("")
        out.append(SEPARATOR)
    out.append(MESSAGES_LINE)
    for key, de, en in messages():
        out.append(f"{key} = {(de, en)[column]}")
    out.append("")
    out.append(SEPARATOR)
    out.append("Global Strings")
    out.append(f"{count_key} = {len(GLOBAL_STRINGS)}")
    for key, de, en in GLOBAL_STRINGS:
        out.append(f"{key} = {(de, en)[column]}")
    return out


def render(sections, file_name):
    column, description, count_key = LANGUAGES[file_name]
    lines = lines_for(sections, column, description, count_key)
    return "".join(line + "\r\n" for line in lines).encode("cp1252")


def main(argv):
    sections = form_sections(read_form_texts(FORM_TEXTS))
    check_tables(sections)
    check_only = "--check" in argv[1:]
    stale = []
    for file_name in LANGUAGES:
        path = DATA / file_name
        data = render(sections, file_name)
        if check_only:
            if not path.exists() or path.read_bytes() != data:
                stale.append(file_name)
        else:
            tmp = path.with_suffix(".lng.tmp")
            tmp.write_bytes(data)
            tmp.replace(path)
    if stale:
        print("out of date, run tools/lng/generate.py: " + ", ".join(stale))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
