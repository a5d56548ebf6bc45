#!/usr/bin/env python3
"""Writes the language files data/deutsch.lng and data/english.lng.

The tables below are the one place where the shipped texts are kept: one
table per form that reads a language file when it loads, the German texts of
the messages (their keys and English texts are the program's own, read from
MessageTexts.h), and the table of the 93 global strings. Edit them here and
run

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
KEY_TABLE = ROOT / "src" / "core" / "localisation" / "GlobalStrings.h"
MESSAGE_TABLE = ROOT / "src" / "core" / "localisation" / "MessageTexts.h"
MESSAGES_LINE = "Quarle Messages"

VERSION = "0.8.4"
SEPARATOR = "-" * 22
NA = None  # a property the control doesn't have

LANGUAGES = {
    # file name: (column, description, count line key)
    "deutsch.lng": (0, "Deutsch", "Anzahl"),
    "english.lng": (1, "English", "Count"),
}


def C(key, de, en, de_tip="", en_tip=""):
    """A control with a caption and a tool tip (label, button, frame...)."""
    return (key, (de, en), (de_tip, en_tip))


def T(key, de_tip, en_tip):
    """A control with a tool tip only (text box, list, combo box, picture)."""
    return (key, (NA, NA), (de_tip, en_tip))


def M(key, de, en):
    """A menu entry: a caption, no tool tip."""
    return (key, (de, en), (NA, NA))


def recent(key):
    """A recent-file menu entry: it always shows the file, whatever stands here."""
    return (key, ("...", "..."), (NA, NA))


BACK = C("CmdZurueck", "<-- Zurück", "<-- Back")
CANCEL_WIZARD = C("CmdAbbrechen", "Abbrechen", "Cancel")
NEXT = C("CmdWeiter", "Weiter -->", "Next -->")
OK = C("OKButton", "OK", "OK")
CANCEL = C("CancelButton", "Abbrechen", "Cancel")

AXIS_TIP = ("Legt die Achse fest über die Half-Life die Kontrolle übernehmen kann",
            "Sets the axis about which Half-Life can take control")
LIMIT_TIP = ("Um wieviel Grad an der Achse gedreht werden kann (z.B. dass der Kopf nicht "
             "einmal um 360 Grad gedreht werden kann)",
             "How many degrees it can turn about the axis (e.g. so that a head cannot turn "
             "all the way round)")
LX_TIP = ("($sequence - LX) - Sorgt dafür dass das Modell nach der Animation nicht wieder an "
          "die Ausgangsposition versetzt wird",
          "($sequence - LX) - Keeps the model from being put back to its starting position "
          "after the animation")


def axes():
    return [C(f"CtrlAchse({i})", f"{a}-Achse", f"{a} axis", *AXIS_TIP)
            for i, a in enumerate("XYZ")]


def skeleton_views():
    """The controls that the attachment and the controller dialog share."""
    return [
        C("Label6", "Vorderansicht (X,Y)", "Front view (X,Y)"),
        C("Label7", "Draufsicht (X,Z)", "Top view (X,Z)"),
        C("Frame2", "Knocheninfos", "Bone"),
        C("Label8", "X:", "X:"),
        C("Label9", "Y:", "Y:"),
        C("Label10", "Z:", "Z:"),
        C("Label11", "Parent:", "Parent:"),
    ]


FORMS = [
    ("FrmMain", ("Quarle", "Quarle"), [
        C("CmdModeleinst", "Modelleinstellungen", "Model settings",
          "Massstab, Controller, Augenpos., usw.", "Scale, controllers, eye position, etc."),
        C("CmdCompile", "Erstelle Modell", "Build model",
          "Was wohl?", "Saves the script and builds the model with the compiler"),
        C("FrmPaths", "Pfade", "Paths"),
        C("LblTexturepath", "Texturenpfad:", "Texture path:"),
        T("TxtTexturepath",
          "($cdtextures) - Pfad in dem die Texturen des Modells gespeichert sind",
          "($cdtexture) - Folder that holds the textures of the model"),
        C("CmdBrowseTexture", "...", "...", "Browse", "Browse"),
        C("LblModelpath", "Modell-Dateienpfad:", "Model files path:"),
        T("TxtModelpath",
          "($cd) - Pfad in dem die mdl-Dateien für das Modell gespeichert sind",
          "($cd) - Folder that holds the files of the model"),
        C("CmdBrowseModel", "...", "...", "Browse", "Browse"),
        C("FrmModelfiles", "Modelldateien", "Model files"),
        T("LstFiles", "Zur Verfügung stehende Modell-Dateien", "Available model files"),
        T("FileList", "Zur Verfügung stehende Modell-Dateien", "Available model files"),
        C("CmdAdd", "", "", "Füge Animation Hinzu", "Add the selected files"),
        C("CmdDelAnimation", "", "", "Lösche Animation", "Remove the selected entries"),
        C("TabSmd", "Modeldateien", "Model files"),
        T("CmbBodyGroup", "Liste der Bodypartgruppen", "Body groups of the model"),
        C("CmdNewGroup", "Neu", "New",
          "Fügt eine neue Bodypartgruppe hinzu", "Adds a new body group"),
        C("CmdDel", "Del", "Delete",
          "Löscht die markierte Bodypartgruppe", "Deletes the selected body group"),
        C("CmdRename", "Ren", "Rename"),
        C("LblParameter", "Parameter:", "Options:"),
        C("ChkReverse", "Reverse", "Reverse"),
        T("LstAnimations", "Alle Animationen für ein Modell", "All animations of the model"),
        C("LblAnimGroup", "Animgruppe:", "Anim group:"),
        C("LblAnimName", "Name:", "Name:"),
        T("TxtAnimName", "($sequence) - Name der Animation",
          "($sequence) - Name of the animation"),
        C("LblAnimID", "Anim.-ID:", "Activity:"),
        T("TxtAnimID",
          "Legt den Identifikationsnamen für Vordefinierte Standartfunktion fest, falls "
          "vorhanden",
          "Sets the activity name of a predefined standard behaviour, if there is one"),
        C("LblSMDFile", "SmdDatei:", "SMD file:"),
        C("CmdAnimExt", "Erweitert", "Advanced"),
        C("CmdWizBack", "Zurück", "Back"),
        C("CmdNext", "Weiter", "Next"),
        C("CmdEnd", "Ende", "End"),
        M("MnuDatei", "&Datei", "&File"),
        M("MnuDateiNeu", "&Neu", "&New"),
        M("MnuDateiOeffnen", "&Öffnen", "&Open..."),
        M("MnuDateiSpeichern", "&Speichern", "&Save"),
        M("MnuDateiSpeichernunter", "Speichern &unter", "Save &as..."),
        M("MnuDateiComp", "mdl-Datei &erstellen", "&Build .mdl file"),
        M("MnuDateiView", "Model mit &Viewer öffnen", "Open model in &viewer"),
        M("MnuDateiViewCode", "qc-Datei mit &Editor öffnen", "Open .qc file in &editor"),
        M("MnuDateiPreview", "&3D-Vorschau", "&3D preview"),
        recent("MnuDateiLast1"),
        recent("MnuDateiLast2"),
        recent("MnuDateiLast3"),
        recent("MnuDateiLast4"),
        M("MnuDateiBeenden", "&Beenden", "E&xit"),
        M("MnuEinstellungen", "&Einstellungen", "&Settings"),
        M("MnuEinstModel", "&Modeleinstellungen", "&Model settings"),
        M("MnuEinstAllg", "&Allgemeine Einstellungen", "&General settings"),
        M("MnuWizards", "&Wizards", "&Wizards"),
        M("MnuWizardsWizAn", "&Wizard an", "&Assistant on"),
        M("MnuWizardsGrWiz", "&Grundeinstellungen Wizard", "&Base settings wizard"),
        M("MnuWizardsAnimWiz", "&Animationen Wizard", "&Animation wizard"),
        M("MnuHilfe", "&Hilfe", "&Help"),
        M("MnuHilfeUeber", "&Über", "&About"),
    ]),
    ("DlgSettings", ("Allgemeine Einstellungen", "General settings"), [
        C("FrmPaths", "Pfade", "Paths"),
        C("LblStudioMDL", "Compiler:", "Compiler:"),
        T("TxtStudioMDL", "Pfad des Compilers (studiomdl)", "Path of the compiler (studiomdl)"),
        C("LblModelviewer", "Modelviewer:", "Model viewer:"),
        T("TxtModelviewer", "Pfad des Modelviewers", "Path of the model viewer"),
        C("LblEditor", "Texteditor:", "Text editor:"),
        T("TxtEditor", "Pfad des Texteditors für die qc-Datei",
          "Path of the text editor for the .qc script"),
        C("Command1", "...", "...", "Compiler suchen", "Browse for the compiler"),
        C("Command2", "...", "...", "Modelviewer suchen", "Browse for the model viewer"),
        C("Command3", "...", "...", "Texteditor suchen", "Browse for the text editor"),
        T("ImageStudioMDL", "Gefunden und startbar?", "Found, and can it be started?"),
        T("ImageModelviewer", "Gefunden und startbar?", "Found, and can it be started?"),
        T("ImageEditor", "Gefunden und startbar?", "Found, and can it be started?"),
        C("FrmSprache", "Sprache", "Language"),
        T("CmbLanguage", "Sprache des Programms; die Wahl gilt sofort",
          "Language of the program; a pick applies at once"),
        C("LblVersion", "Version:", "Version:"),
        C("CmdNewLocalisation", "Neue Lokalisierung", "New localisation"),
        # The button names what a click will do, and its click sets these
        # English words itself: the caption stays English in every language.
        C("CmdLocalisationmode", "Localisationmode on", "Localisationmode on"),
        C("CmdLocaliseStrings", "", "", "Globale Texte übersetzen", "Translate the global strings"),
        OK,
        CANCEL,
    ]),
    ("frmAbout", ("Über", "About"), [
        C("lblTitle", "Quarle", "Quarle"),
        C("lblDisclaimer",
          "Quarle erstellt und bearbeitet qc-Dateien für Half-Life-Modelle. Benutzung auf "
          "eigene Gefahr.",
          "Quarle writes and edits .qc scripts for Half-Life models. Use at your own risk."),
        C("LblFreeware", "Freeware", "Freeware"),
        # The caption is filled at load with the version string and the
        # program's version.
        C("LblVersion", "", "", "Version des Programms", "Version of the program"),
        C("CmdOK", "OK", "OK"),
    ]),
    ("FrmPreview", ("3D-Vorschau", "3D preview"), [
        T("PicView",
          "Linke Maustaste dreht, rechte oder mittlere verschiebt, das Rad zoomt",
          "Left button turns, right or middle button moves, the wheel zooms"),
        C("CmdPlay", "Abspielen", "Play",
          "Spielt die gewählte Animation ab oder hält sie an",
          "Plays the selected animation or holds it"),
        C("CmdFrameModel", "Einpassen (F)", "Frame model (F)",
          "Zeigt das ganze Modell", "Shows the whole model"),
        C("LblStatus", "", "", "Was die Vorschau zeigt und was ihr fehlt",
          "What the preview shows and what it lacks"),
    ]),
    ("DlgOrigin", ("XYZ Verschiebung", "Origin offset"), [
        C("Label4", "X,Y", "X,Y"),
        T("PicXYVer", "XY-Verschiebung", "Click to set the X and Y offset"),
        C("Label5", "X,Z", "X,Z"),
        T("PicXZVer", "XZ-Verschiebung", "Click to set the X and Z offset"),
        C("Label1", "X:", "X:"),
        T("TxtX", "X-Verschiebung", "X offset (Enter takes it)"),
        C("Label2", "Y:", "Y:"),
        T("TxtY", "Y-Verschiebung", "Y offset (Enter takes it)"),
        C("Label3", "Z:", "Z:"),
        T("TxtZ", "Z-Verschiebung", "Z offset (Enter takes it)"),
        OK,
        CANCEL,
    ]),
    ("DlgController", ("Controller", "Controllers"), skeleton_views() + [
        T("TxtBone", "Listet die Knochen für das Modell auf", "Lists the bones of the model"),
        C("Label1", "Controller-Nr.:", "Controller no.:"),
        T("CmbController", "Wähle eine Controllernummer aus", "Choose a controller number"),
        C("ChkCtrlAktiv", "Controller an", "Controller on",
          "Ist Controller aktiv?", "Is the controller active?"),
        C("Label2", "Knochen an Ctrl.:", "Bone:",
          "Knochen an dem die Bindung anhängt", "Bone that the controller turns"),
        C("FrameCtrl", "Controllereinstellungen", "Controller settings"),
        *axes(),
        C("Label3", "Winkelgrenzen:", "Angle limits:"),
        C("Label4", "Min:", "Min:"),
        T("TxtLimitMin", *LIMIT_TIP),
        C("Label5", "Max:", "Max:"),
        T("TxtLimitMax", *LIMIT_TIP),
        OK,
    ]),
    ("Wizard2", ("Wizard - Pfade", "Wizard - Paths"), [
        C("LblHelpText1",
          "Gib jetz den Pfad an in dem die Texturen für das Modell liegen sowie den Pfad in "
          "dem die einzelnen smd-Dateien (also die Animations und Referenzdateien) liegen.",
          "Now enter the folder that holds the textures of the model, and the folder that "
          "holds its .smd files (the animation and reference files)."),
        C("LblHelpText2", "z.B. für den Texturenpfad:", "e.g. for the texture path:"),
        C("LblHelpText3", r'"c:\modells\meinmodell\texturen"', r'"c:\models\mymodel\textures"'),
        C("LblHelpText4", "z.B. für den Modell-Dateienpfad:", "e.g. for the model files path:"),
        C("LblHelpText5", r'"c:\modells\meinmodell"', r'"c:\models\mymodel"'),
        C("LblTexturepath", "Texturenpfad:", "Texture path:"),
        T("TxtWiz2Texturenpfad", "Pfad in dem die Texturen des Modells gespeichert sind",
          "Folder that holds the textures of the model"),
        C("CmdWiz2Texturenpfad", "...", "..."),
        C("LblModelpath", "Modell-Dateienpfad:", "Model files path:"),
        T("TxtWiz2Modelpfad", "Pfad in dem die mdl-Dateien für das Modell gespeichert sind",
          "Folder that holds the files of the model"),
        C("CmdWiz2Modelpfad", "...", "..."),
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("Wizard3", ("Wizard - Referenzmodell", "Wizard - Reference model"), [
        C("LblHelpText1",
          "Wähle die Referenzmodelldatei, also die smd-Datei die den Körper (nicht bloss die "
          "Knochen) des Modells enthält, aus.",
          "Choose the reference model: the .smd file that holds the body of the model, not "
          "just its bones."),
        C("LblModelfiles", "Vorhandene Modelldateien im Modellordner:",
          "Model files in the model folder:"),
        C("CmdAssign", "", "", "Ausgewählte Datei als Referenzmodell übernehmen",
          "Take the selected file as the reference model"),
        C("LblReferencemodel", "Referenzmodell:", "Reference model:"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("Wizard4", ("Wizard - Sonstige", "Wizard - Other settings"), [
        C("FrmScale", "Maßstab", "Scale"),
        C("LblHelpText1",
          'Gib den Maßstab in dem das Modell gespeichert werden soll an. Er kann in der Regel '
          'auf "1" bleiben.',
          'Enter the scale at which the model is to be built. It can usually stay at "1".'),
        C("LblScale", "Maßstab:", "Scale:"),
        C("FrmEyes", "Augen", "Eyes"),
        C("LblHelpText2",
          "Falls das Modell ein Monster oder ein anderes Lebewesen mit Augen ist sollte jetzt "
          "die XYZ-Koordinate des Modells angegeben werden.",
          "If the model is a monster or another creature with eyes, enter the X, Y and Z "
          "coordinates of its eyes now."),
        C("ChkWiz4Augen", "Augen", "Eyes"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("Wizard5", ("Wizard", "Wizard"), [
        C("LblAllRight", "Sind alle Angaben so richtig:", "Is everything right?"),
        BACK,
        CANCEL_WIZARD,
        C("CmdFertig", "Fertigstellen", "Finish"),
    ]),
    ("AnimWiz1", ("Animations-Wizard", "Animation wizard"), [
        C("LblHelpText",
          "Gib einen Namen für die Animation an. Mit diesem wird die Animation in der fertigen "
          'mdl-Datei angesprochen. Für eine Sprunganimation zum Beispiel den Namen "jump".',
          "Enter a name for the animation. The finished .mdl file calls the animation by this "
          'name: for a jump, for example, "jump".'),
        C("LblAnimationname", "Animationsname:", "Animation name:"),
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("AnimWiz2", ("Animations-Wizard", "Animation wizard"), [
        C("LblHelpText",
          "Wähl die Modelldatei aus in der die Animation gespeichert ist. Diese muss sich im "
          "dem Ordner befinden, den du als Modellpfad angegeben hast. Zum Beispiel "
          '"jump.smd".',
          "Choose the model file that holds the animation. It must lie in the folder that you "
          'gave as the model path, for example "jump.smd".'),
        C("LblAvailableModels", "Vorhandene Modelldateien im Modellordner:",
          "Model files in the model folder:"),
        C("CmdAssignAnimation", "", "", "Ausgewählte Datei als Animationmodell übernehmen",
          "Take the selected file as the animation file"),
        C("LblAnimationmodel", "Animationmodell:", "Animation file:"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("AnimWiz3", ("Animations-Wizard", "Animation wizard"), [
        C("FrmAnimationID", "Animations-ID", "Activity"),
        C("LblHelpText1",
          "Falls die Animation einen Standartvorgang wie zum Beispiel Gehen oder schießen ist, "
          "kannst du einen entsprechenden Ident- ifikationsnamen für die Animation aus- wählen. "
          "Dadurch wird diese automatisch ausgeführt wenn das entsprechende Ereigniss eintritt.",
          "If the animation shows a standard action, such as walking or shooting, you can "
          "choose the matching activity for it. The game then plays it by itself whenever "
          "that action happens."),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("AnimWiz4", ("Animations-Wizard", "Animation wizard"), [
        C("FrmFPS", "FramesPerSecond", "Frames per second"),
        C("LblHelpText1",
          "Mit welcher Geschwindigkeit soll die Animation ablaufen (in Bildern pro Sekunde - "
          "fps), Standart ist 30.",
          "How fast should the animation run, in frames per second (fps)? The default is 30."),
        C("LblFPS", "Fps:", "Fps:"),
        C("FrmFramelilimts", "Framesbegrenzung", "Frame range"),
        C("LblHelpText2",
          "Wenn nicht alle Bilder der Animation angezeigt werden sollen, kannst du hier den "
          "Start- und den Endpunkt für die Animation angeben.",
          "If not every frame of the animation is to be shown, enter its first and last frame "
          "here."),
        C("ChkAnimWiz4Frame", "Frames:", "Frames:"),
        C("LblTo", "bis", "to"),
        C("FrmLoop", "Schleife", "Loop"),
        C("LblHelpText3", "Soll sich die Animation ständig wiederhohlen?",
          "Should the animation repeat over and over?"),
        C("ChkAnimWiz4Schleife", "Schleife", "Loop"),
        BACK,
        CANCEL_WIZARD,
        NEXT,
    ]),
    ("AnimWiz5", ("Animation-Wizard", "Animation wizard"), [
        C("LblAllRight", "Sind alle Angaben so richtig:", "Is everything right?"),
        BACK,
        CANCEL_WIZARD,
        C("CmdWeiter", "Fertigstellen", "Finish"),
    ]),
    ("DlgCompile", ("Compiliere", "Compiling"), [
        OK,
        # Ends the wait for a compiler that doesn't finish.
        C("CmdCancel", "Abbrechen", "Cancel"),
        C("ChkViewAfterCompile", "Model nach dem Kompilieren mit Viewer öffnen",
          "Open the model in the viewer after compiling"),
    ]),
    ("DlgBindung", ("Bindungen", "Attachments"), skeleton_views() + [
        C("Label1", "Bindungs-Nr.:", "Attachment no.:"),
        T("CmbBindung", "Wähle eine Attachmentnummer aus", "Choose an attachment number"),
        C("ChkBndgAktiv", "Bindung an", "Attachment on",
          "Ist Bindung aktiv?", "Is the attachment active?"),
        C("Label2", "Knochen an Bndg.:", "Bone:",
          "Knochen an dem die Bindung anhängt", "Bone that the attachment hangs on"),
        C("Frame1", "Bindungspunkt", "Attachment point"),
        C("Label3", "X-Koordinate:", "X coordinate:"),
        T("TxtBindungX", "Gibt die X-Koordinate der Bindung relativ zum Knochen an",
          "X coordinate of the attachment, relative to the bone"),
        C("Label4", "Y-Koordinate:", "Y coordinate:"),
        T("TxtBindungY", "Gibt die Y-Koordinate der Bindung relativ zum Knochen an",
          "Y coordinate of the attachment, relative to the bone"),
        C("Label5", "Z-Koordinate:", "Z coordinate:"),
        T("TxtBindungZ", "Gibt die Z-Koordinate der Bindung relativ zum Knochen an",
          "Z coordinate of the attachment, relative to the bone"),
        OK,
    ]),
    ("DlgModeleinstellungen", ("Modelleinstellungen", "Model settings"), [
        C("Label2", "Maßstab:", "Scale:",
          "($scale) - Erstellt das Modell in einem anderen Massstab",
          "($scale) - Builds the model at another scale"),
        T("TxtMassstab", "Vergrössert oder verkleinert das Originalmodell (1=Originalgröße)",
          "Enlarges or shrinks the original model (1 = original size)"),
        C("ChkAugen", "Augen:", "Eyes:",
          "($eyeposition) - Position der Augen des Modells",
          "($eyeposition) - Position of the eyes of the model"),
        T("TxtAugenX", "X-Koordinate", "X coordinate"),
        T("TxtAugenY", "Y-Koordinate", "Y coordinate"),
        T("TxtAugenZ", "Z-Koordinate", "Z coordinate"),
        C("Label1", "Texturhelligkeit:", "Texture gamma:"),
        T("TxtGamma",
          "($gamma) - Legt die Helligkeit sämtlicher Texturen des Modells fest - Standart ist "
          "1.8",
          "($gamma) - Sets the brightness of all textures of the model - the default is 1.8"),
        C("ChkExtTex", "Speichere Texturen extra", "Store textures separately",
          "($externaltextures) - Die Texturen werden ausserhalb des Modells als extra Dateien "
          "gespeichert",
          "($externaltextures) - The textures are stored outside the model, in files of their "
          "own"),
        C("ChkSequenceGroupSize", "Split Modeldatei:", "Split model file:"),
        C("LblKB", "KB", "KB"),
        C("CmdAttachment", "Attachments", "Attachments",
          '($attachment) - Gibt einen stellen am Modell an an denen Sprites, Munitionshülsen '
          'oder sonstiges "rauskommen"',
          "($attachment) - Marks places on the model where sprites, shells or anything else "
          "come out"),
        C("CmdController", "Controller", "Controllers",
          "($controller) - Überträgt die Kontrolle eines Bones an Half-Life (z.B. Drehung des "
          "Kopfes zum Gegner)",
          "($controller) - Hands control of a bone to Half-Life (e.g. turning the head towards "
          "an enemy)"),
        C("CmdTextureGroup", "Alt. Texturen", "Alt. textures"),
        C("CmdTexturemode", "Texturmodi", "Texture modes"),
        OK,
    ]),
    ("DlgName", ("Gib den Namen der Gruppe ein", "Enter the name of the group"), [
        C("Label1", "Gruppenname:", "Group name:"),
        C("CmdOK", "Hinzufügen", "Add"),
        C("CmdAbbrechen", "Abbrechen", "Cancel"),
    ]),
    ("FrmEvents", ("Events", "Events"), [
        C("CmdDel", "", "", "Lösche Animation", "Deletes the selected events"),
        C("LblFrame", "Frame:", "Frame:"),
        C("LblParameter", "Parameter:", "Parameter:"),
        # No code writes these two labels: only the language file fills them.
        C("LblDescription", "Beschreibung:", "Description:"),
        C("LblBeschreibung",
          "Wähle Events aus der Liste aus und füge sie mit dem Pfeil der Animation hinzu. "
          "Markiere ein Event der Animation, um seinen Frame und seinen Parameter (Sound, Satz "
          "oder Zielname, je nach Event) einzugeben.",
          "Pick events in the list and add them to the animation with the arrow. Select an "
          "event of the animation to enter its frame and its parameter (a sound, a sentence or "
          "a target name, as the event needs)."),
        C("CmdOK", "OK", "OK"),
    ]),
    ("DlgAnimExt", ("Erweiterte Animationseigenschaften", "Advanced animation properties"), [
        C("Label6", "Fps:", "Fps:"),
        T("Text6",
          "($sequence...fps) - Gibt die Geschwindigkeit an mit der die Animation abgespielt wird",
          "($sequence ... fps) - Speed at which the animation is played"),
        C("Label7", "Rotation:", "Rotation:"),
        C("Label2", "Maßstab:", "Scale:"),
        C("Check1", "Schleife", "Loop",
          "($sequence...looped) - Die Animation wird ständig wiederhohlt",
          "($sequence ... loop) - The animation repeats over and over"),
        C("ChkLX", "LX", "LX", *LX_TIP),
        C("ChkLY", "LY", "LY", *LX_TIP),
        C("ChkLZ", "LZ", "LZ", *LX_TIP),
        C("ChkFrameGrenze", "Frames:", "Frames:",
          "Benutze nur bestimmte Frames der Animation", "Use only some of the frames"),
        T("TxtMinFrame", "Start", "First frame"),
        C("Label8", "bis", "to"),
        T("TxtMaxFrame", "Ende", "Last frame"),
        C("CmdEvents", "Events", "Events"),
        C("CmdOrigin", "XYZ-Versch.", "XYZ offset",
          "($sequence - origin) - Verschiebt die Nullkoordinaten des Modells",
          "($sequence - origin) - Moves the origin of the model"),
        C("ChkBlend", "Animationblending", "Animation blending"),
        C("Label1", "SMD-Datei:", "SMD file:"),
        C("FrameCtrl", "Blending-Einstellungen", "Blending settings"),
        *axes(),
        C("Label3", "Grenzen:", "Limits:"),
        C("Label4", "Min:", "Min:"),
        T("TxtLimitMin", *LIMIT_TIP),
        C("Label5", "Max:", "Max:"),
        T("TxtLimitMax", *LIMIT_TIP),
        OK,
    ]),
    ("DlgRenameGroup", ("Gruppe umbenennen", "Rename group"), [
        C("Label1", "Neue Bezeichnung für Gruppe:", "New name of the group:"),
        OK,
        CANCEL,
    ]),
    # The two texture dialogs keep their designed captions at load; their
    # sections are here for the language editor, which rewrites them.
    ("DlgTextureGroup", ("Texturvariationen", "Texture variations"), [
        C("LblTexturegroup", "Variation:", "Variation:"),
        C("FrmVariation", "Variation", "Variation"),
        C("LblTextur", "Zu ändernde Textur:", "Texture to change:"),
        C("ChkChangeTo", "Ändern zu:", "Change to:"),
        C("LblPreview", "Vorschau:", "Preview:"),
        OK,
    ]),
    ("DlgTexturemode", ("Texturemodes", "Texture modes"), [
        C("LblTextures", "Texturen:", "Textures:"),
        C("FrmRenderMode", "Rendermode:", "Render mode:"),
        C("OptModes(0)", "Normal", "Normal"),
        C("OptModes(1)", "Masked", "Masked"),
        C("OptModes(2)", "Additive", "Additive"),
        C("LblWarning", "Achtung diese Funktion wird nicht von jedem Compiler unterstützt!",
          "Warning: not every compiler supports this function!"),
        OK,
    ]),
]

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
    "MSG_READ_INCLUDE_UNREADABLE": "Eine eingebundene Datei kann nicht geöffnet werden und wurde "
                                   "übersprungen",
    "MSG_READ_INCLUDE_LOOP": "Eine Datei bindet sich selbst ein; das $include wurde übersprungen",
    "MSG_READ_INCLUDE_TOO_DEEP": "Die Include-Dateien sind zu tief verschachtelt; das $include "
                                 "wurde übersprungen",
    "MSG_READ_TOO_MANY_BODY_GROUPS": "Mehr als 32 Bodygruppen; der Rest wurde übersprungen",
    "MSG_READ_TOO_MANY_PARTS": "Mehr als 16 Teile in einer Bodygruppe; der Rest wurde "
                               "übersprungen",
    "MSG_READ_ATTACHMENT_INDEX": "Eine Attachment-Nummer außerhalb von 0 bis 3 wurde "
                                 "übersprungen",
    "MSG_READ_CONTROLLER_INDEX": "Eine Controller-Nummer außerhalb von 0 bis 3 wurde "
                                 "übersprungen",
    "MSG_READ_TOO_MANY_SEQUENCE_GROUPS": "Mehr als 10 Sequenzgruppen; ihre Sequenzen wurden "
                                         "übersprungen",
    "MSG_READ_TOO_MANY_SEQUENCES": "Mehr als 513 Sequenzen in einer Gruppe; der Rest wurde "
                                   "übersprungen",
    "MSG_READ_TOO_MANY_EVENTS": "Mehr als 255 Events in einer Sequenz; der Rest wurde "
                                "übersprungen",
    "MSG_READ_TOO_MANY_TEXTURES": "Mehr als 10 Texturen in den Teilen; der Rest wurde "
                                  "weggelassen",
    "MSG_READ_TOO_MANY_TEXTURE_COLUMNS": "Mehr als 10 Texturen in einer Zeile einer "
                                         "Texturgruppe; der Rest wurde übersprungen",
    "MSG_READ_TOO_MANY_TEXTURE_ROWS": "Mehr als 100 Zeilen in den Texturgruppen; der Rest wurde "
                                      "übersprungen",
    "MSG_READ_NUMBER_OUT_OF_RANGE": "Eine Zahl war zu groß für ihr Feld und wurde auf dessen "
                                    "Grenze gekürzt",
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
    "MSG_FINDING_UNKNOWN_DIRECTIVE": "Eine Anweisung, die Quarle nicht kennt, fällt weg",
    "MSG_FINDING_LINE_NOT_READ": "Eine Zeile, die zu keiner Anweisung gehört, fällt weg",
    "MSG_FINDING_LINE_AFTER_SEQUENCE": "Eine Zeile nach einer $sequence-Zeile (etwa ein Event) fällt weg",
    "MSG_FINDING_MOTION_FLAG_DROPPED": "Ein Bewegungsschalter X, AX, AY oder AZR fällt weg",
    "MSG_FINDING_SEQUENCE_OPTION_MISREAD": "Eine Option einer Sequenz, die Quarle nicht kennt, wird als Blend-Datei oder Aktivität gelesen",
    "MSG_FINDING_BLEND_WITHOUT_FILE": "Ein Blend ohne zweite Datei fällt weg",
    "MSG_FINDING_BODY_WORDS_LOST": "Wörter hinter den zwei Namen eines $body fallen weg",
    "MSG_FINDING_BODY_GROUP_REVERSE_LOST": "Eine Bodygruppe aus einem gespiegelten Teil verliert ihr reverse",
    "MSG_FINDING_PATH_REPLACED": "Eine $cd- oder $cdtexture-Zeile wird von einer späteren ersetzt",
    "MSG_FINDING_SEQUENCE_NOT_WRITTEN": "Eine Sequenz nach der 101. ihrer Gruppe fällt weg",
    "MSG_FINDING_FRACTION_ROUNDED": "Eine Kommazahl in einem Feld für ganze Zahlen wird gerundet",
    "MSG_FINDING_TEXTURE_NOT_IN_PARTS": "Eine Textur, die kein Teil benutzt, fällt weg",
    "MSG_FINDING_RENDER_MODE_CHANGED": "Ein anderer Render-Modus als masked oder additive wird zu additive",
    "MSG_FINDING_TEXTURE_ROW_DROPPED": "Eine Zeile einer Texturgruppe, die nichts ändert, fällt weg",
    "MSG_FINDING_PART_READ_AS_BLANK": "Eine Teil-Zeile ohne studio und einen Namen in Anführungszeichen wird zu einem leeren Teil",
    "MSG_FINDING_AXIS_NOT_KEPT": "Eine andere Achse als XR, YR oder ZR wird nicht übernommen",
    "MSG_FINDING_PLACE": "%1, Zeile %2: %3",
    "MSG_FINDINGS_ONE": "Quarle kann nicht alles in diesem Skript behalten: 1 Stelle ändert beim Speichern das Modell.",
    "MSG_FINDINGS_MANY": "Quarle kann nicht alles in diesem Skript behalten: %1 Stellen ändern beim Speichern das Modell.",
    "MSG_FINDINGS_FIRST": "Die ersten Stellen:",
    "MSG_FINDINGS_MORE": "... und %1 weitere.",
    "MSG_FINDINGS_KEPT": "Das erste Speichern bewahrt das ursprüngliche Skript daneben als „%1“ auf.",
    "MSG_FINDINGS_TITLE": "Was das Speichern ändert",
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
    "MSG_CHECK_SMD_MISSING": "Die Modell- oder Animationsdatei „%1“ wurde nicht gefunden.",
    "MSG_CHECK_FILE_OTHER_CASE": "„%1“ gibt es nur als „%2“, mit anderer Groß- und Kleinschreibung; der Compiler findet die Datei nur unter Windows.",
    "MSG_CHECK_SMD_UNREADABLE": "„%1“ kann nicht gelesen werden.",
    "MSG_CHECK_SMD_VERSION": "„%1“ beginnt nicht mit der Zeile „version 1“.",
    "MSG_CHECK_SMD_BONE_TWICE": "„%1“ nennt den Knochen „%2“ zweimal.",
    "MSG_CHECK_SMD_NO_FRAME": "Die Animationsdatei „%1“ hat kein Bild (time) in ihrem Skelett.",
    "MSG_CHECK_SMD_BAD_LINE": "„%1“, Zeile %2, kann nicht gelesen werden und fehlt im Modell.",
    "MSG_CHECK_TEXTURE_NOT_BMP": "„%1“ verwendet die Textur „%2“, die keine .bmp-Datei ist.",
    "MSG_CHECK_TEXTURE_MISSING": "Die Textur „%2“ von „%1“ wurde in „%3“ nicht gefunden.",
    "MSG_CHECK_BMP_NOT_BITMAP": "Die Textur „%1“ ist keine lesbare Bitmap.",
    "MSG_CHECK_BMP_HEADER": "Die Textur „%1“ hat einen Info-Kopf von %2 Byte; der Compiler nimmt nur den einfachen mit 40 Byte (als Windows-Bitmap ohne Farbrauminformationen speichern).",
    "MSG_CHECK_BMP_DEPTH": "Die Textur „%1“ hat %2 Bit pro Pixel; der Compiler nimmt nur 8 Bit mit Palette (256 Farben).",
    "MSG_CHECK_BMP_COMPRESSED": "Die Textur „%1“ ist komprimiert (RLE); der Compiler nimmt nur unkomprimierte Bitmaps.",
    "MSG_CHECK_BMP_CUT_SHORT": "Die Textur „%1“ ist unvollständig: Palette oder Pixel fehlen in der Datei.",
    "MSG_CHECK_BMP_NOT_POWER_OF_TWO": "Die Textur „%1“ hat %2 × %3 Pixel; eine Seite, die keine Zweierpotenz ist (64, 128, 256, ...), wird vom Spiel skaliert und kann unscharf wirken.",
    "MSG_CHECK_TEXTURE_TOO_LARGE": "Die Textur „%1“ ergibt so, wie die Modelle sie verwenden, eine Haut von %2 × %3 Pixeln; mit Palette ist das mehr als die 640 × 480 Byte des Compilers.",
    "MSG_CHECK_TOO_MANY_BONES": "Die Modellteile haben %1 Knochen; der Compiler nimmt höchstens %2.",
    "MSG_CHECK_TOO_MANY_TEXTURES": "Die Modellteile verwenden %1 Texturen; der Compiler nimmt höchstens %2.",
    "MSG_CHECK_TOO_MANY_VERTICES": "„%1“ hat %2 Eckpunkte; ein Teil darf höchstens %3 haben.",
    "MSG_CHECK_TOO_MANY_NORMALS": "„%1“ hat %2 Normalen; ein Teil darf höchstens %3 haben.",
    "MSG_CHECK_TOO_MANY_TRIANGLES": "„%1“ hat %2 Dreiecke; ein Teil darf höchstens %3 haben.",
    "MSG_CHECK_NEAR_LIMIT": "„%1“ ist nahe an einer Grenze des Compilers: %2 von höchstens %3 %4.",
    "MSG_CHECK_WORD_VERTICES": "Eckpunkten",
    "MSG_CHECK_WORD_NORMALS": "Normalen",
    "MSG_CHECK_WORD_TRIANGLES": "Dreiecken",
    "MSG_CHECK_ATTACHMENT_BONE": "Anhängepunkt %1 sitzt am Knochen „%2“, den kein Modellteil hat.",
    "MSG_CHECK_CONTROLLER_BONE": "Controller %1 bewegt den Knochen „%2“, den kein Modellteil hat.",
    "MSG_CHECK_SEQUENCE_LARGE": "Die Animation „%1“ („%2“) kann mehr als 64 KB Animationsdaten haben (%3 Bilder mit %4 Knochen); eine größere Sequenz lehnt der Compiler ab.",
    "MSG_PREVIEW_NO_GL": "OpenGL steht hier nicht zur Verfügung, die Vorschau kann das Modell "
                         "nicht zeichnen.",
    "MSG_PREVIEW_NO_PARTS": "Kein Referenzteil zum Zeigen: füge eines auf der Seite der "
                            "Modelldateien hinzu.",
    "MSG_PREVIEW_PARTS_MISSING": "Nicht im Modellordner: %1",
    "MSG_PREVIEW_TEXTURES_MISSING": "Als Schachbrett gezeichnet, nicht im Texturenordner: %1",
    "MSG_PREVIEW_BIND_POSE": "%1 Dreiecke; keine Animation gewählt",
    "MSG_PREVIEW_FRAME": "%1 Dreiecke; %2: Bild %3 von %4",
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


def check_tables():
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
    for name, _, rows in FORMS:
        seen = set()
        for key, _, _ in rows:
            if key.upper() in seen:
                sys.exit(f"generate.py: {name} names {key} twice")
            seen.add(key.upper())
    for _, de, en in GLOBAL_STRINGS:
        for text in (de, en):
            if text != text.strip(" ") or "\n" in text:
                sys.exit(f"generate.py: a value cannot keep outer blanks or a line break: {text!r}")


def value(text):
    return "<not available>" if text is NA else text


def lines_for(column, description, count_key):
    out = [f"Version = {VERSION}", f"InfoForThis = {description}"]
    for name, titles, rows in FORMS:
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


def render(file_name):
    column, description, count_key = LANGUAGES[file_name]
    text = "".join(line + "\r\n" for line in lines_for(column, description, count_key))
    return text.encode("cp1252")


def main(argv):
    check_tables()
    check_only = "--check" in argv[1:]
    stale = []
    for file_name in LANGUAGES:
        path = DATA / file_name
        data = render(file_name)
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
