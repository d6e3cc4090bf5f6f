<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>ControlPanel</name>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>auto</source>
        <extracomment>The camera sees to it by itself. As short as it can be.</extracomment>
        <translation>auto</translation>
    </message>
    <message>
        <source>off</source>
        <extracomment>The light is off. As short as it can be.</extracomment>
        <translation>aus</translation>
    </message>
    <message>
        <source>&amp;Exposure</source>
        <translation>&amp;Belichtung</translation>
    </message>
    <message>
        <source>How long the sensors gather light; 0 leaves it to the camera</source>
        <translation>Wie lange die Sensoren Licht sammeln; bei 0 bestimmt es die Kamera</translation>
    </message>
    <message>
        <source>&amp;Gain</source>
        <translation>&amp;Verstärkung</translation>
    </message>
    <message>
        <source>How much the signal is amplified; 0 leaves it to the camera</source>
        <translation>Wie sehr das Signal verstärkt wird; bei 0 bestimmt es die Kamera</translation>
    </message>
    <message>
        <source>&amp;LED</source>
        <translation>&amp;LED</translation>
    </message>
    <message>
        <source>How bright the camera&apos;s light is; 0 turns it off</source>
        <translation>Wie hell die Kamera leuchtet; 0 schaltet das Licht aus</translation>
    </message>
    <message>
        <source>&amp;Upside down</source>
        <translation>&amp;Kopfüber</translation>
    </message>
    <message>
        <source>Exchanges top and bottom of the pictures</source>
        <translation>Vertauscht in den Bildern oben und unten</translation>
    </message>
    <message>
        <source>&amp;Mirror</source>
        <translation>&amp;Spiegeln</translation>
    </message>
    <message>
        <source>Exchanges left and right of each picture</source>
        <translation>Vertauscht in jedem Bild links und rechts</translation>
    </message>
    <message>
        <source>S&amp;wap cameras</source>
        <translation>Kamer&amp;atausch</translation>
    </message>
    <message>
        <source>Exchanges the left and the right picture</source>
        <translation>Vertauscht das linke und das rechte Bild</translation>
    </message>
    <message>
        <source>U&amp;ndistort</source>
        <translation>Ent&amp;zerren</translation>
    </message>
    <message>
        <source>Takes the distortion by the lenses out of the pictures</source>
        <translation>Rechnet die Verzeichnung der Objektive aus den Bildern heraus</translation>
    </message>
    <message>
        <source>Arrangement of the pictures</source>
        <translation>Anordnung der Bilder</translation>
    </message>
    <message>
        <source>How the pictures are arranged.
In them, the wheel or + and - zoom, dragging or the arrow keys move,
and a double-click or 0 shows everything again.</source>
        <translation>Wie die Bilder angeordnet sind.
In ihnen vergrößern und verkleinern Mausrad oder + und -, Ziehen oder die Pfeiltasten
verschieben den Ausschnitt, und ein Doppelklick oder 0 zeigt wieder alles.</translation>
    </message>
    <message>
        <source>Save &amp;pictures (S)</source>
        <translation>Bilder s&amp;peichern (S)</translation>
    </message>
    <message>
        <source>Saves the left and the right picture as PNG files in the pictures folder</source>
        <translation>Speichert das linke und das rechte Bild als PNG-Dateien im Bilderordner</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Stream</source>
        <translation>Datenstrom</translation>
    </message>
    <message>
        <source>Picture size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Dropped frames</source>
        <translation>Verlorene Bilder</translation>
    </message>
    <message>
        <source>Unreadable frames</source>
        <translation>Unlesbare Bilder</translation>
    </message>
    <message>
        <source>Node time</source>
        <translation>Rechenzeit</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 Bilder/s</translation>
    </message>
    <message>
        <source>%1 frames were shown</source>
        <translation>%1 Bilder wurden gezeigt</translation>
    </message>
    <message>
        <source>Mean %1, fully white %2 %</source>
        <translation>Mittelwert %1, ganz weiß %2 %</translation>
    </message>
</context>
<context>
    <name>HistogramView</name>
    <message>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <source>Grey values from black to white: left picture as an area, right picture as a line</source>
        <translation>Grauwerte von Schwarz bis Weiß: linkes Bild als Fläche, rechtes Bild als Linie</translation>
    </message>
</context>
<context>
    <name>PictureArrangement</name>
    <message>
        <source>Side by side</source>
        <translation>Nebeneinander</translation>
    </message>
    <message>
        <source>One above the other</source>
        <translation>Übereinander</translation>
    </message>
    <message>
        <source>Left only</source>
        <translation>Nur links</translation>
    </message>
    <message>
        <source>Right only</source>
        <translation>Nur rechts</translation>
    </message>
    <message>
        <source>Red-cyan anaglyph</source>
        <translation>Rot-Cyan-Anaglyphe</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
</context>
<context>
    <name>PictureSaver</name>
    <message>
        <source>the folder cannot be made</source>
        <translation>der Ordner lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>every name is in use</source>
        <translation>alle Namen sind vergeben</translation>
    </message>
</context>
<context>
    <name>PictureView</name>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Anaglyph</source>
        <translation>Anaglyphe</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Pictures of the camera</source>
        <translation>Bilder der Kamera</translation>
    </message>
</context>
<context>
    <name>StereoViewApp</name>
    <message>
        <source>Shows both pictures of the camera live, sets exposure, gain and light, and saves pictures.</source>
        <translation>Zeigt beide Bilder der Kamera live, stellt Belichtung, Verstärkung und Licht ein und speichert Bilder.</translation>
    </message>
    <message>
        <source>The pictures cannot be shown:
the picture layout of this camera library is not known.</source>
        <translation>Die Bilder lassen sich nicht anzeigen:
Wie diese Kamerabibliothek die Bilder ablegt, ist nicht bekannt.</translation>
    </message>
    <message>
        <source>The camera&apos;s frames cannot be read</source>
        <translation>Die Bilder der Kamera sind nicht lesbar</translation>
    </message>
    <message>
        <source>The camera has no such mode.
Choose one under Settings, Camera.</source>
        <translation>Die Kamera hat diesen Modus nicht.
Wählen Sie einen anderen unter Einstellungen, Camera.</translation>
    </message>
    <message>
        <source>No frames from the camera</source>
        <translation>Keine Bilder von der Kamera</translation>
    </message>
    <message>
        <source>There is no picture to save yet</source>
        <translation>Es gibt noch kein Bild zum Speichern</translation>
    </message>
    <message>
        <source>Saving to the pictures folder failed: %1</source>
        <translation>Speichern im Bilderordner fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gespeichert</translation>
    </message>
</context>
</TS>
