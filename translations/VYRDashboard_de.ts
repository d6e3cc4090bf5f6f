<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>ApplicationWindow</name>
    <message>
        <source>&lt;h1&gt;VYR Dashboard&lt;/h1&gt;&lt;h3&gt;Version %1&lt;/h3&gt;&lt;p&gt;A modular system for building advanced vision systems.&lt;/p&gt;&lt;small&gt;&lt;p&gt;%2&lt;/p&gt;&lt;p&gt;License: %3&lt;/p&gt;&lt;p&gt;You can learn more about this application at: %4&lt;/p&gt;&lt;p&gt;VYR Dashboard is distributed by %2 in the hope that it will be useful, but WITHOUT ANY WARRANTY; without even the implied warranty of MERCHANTABILITY or FITNESS FOR A PARTICULAR PURPOSE.&lt;/p&gt;&lt;/small&gt;</source>
        <translation>&lt;h1&gt;VYR Dashboard&lt;/h1&gt;&lt;h3&gt;Version %1&lt;/h3&gt;&lt;p&gt;Ein modulares System zum Aufbau fortgeschrittener Bildverarbeitungssysteme.&lt;/p&gt;&lt;small&gt;&lt;p&gt;%2&lt;/p&gt;&lt;p&gt;Lizenz: %3&lt;/p&gt;&lt;p&gt;Mehr über dieses Programm erfahren Sie unter: %4&lt;/p&gt;&lt;p&gt;VYR Dashboard wird von %2 in der Hoffnung verbreitet, dass es nützlich sein wird, aber OHNE JEDE GEWÄHRLEISTUNG; auch ohne die stillschweigende Gewährleistung der MARKTGÄNGIGKEIT oder der EIGNUNG FÜR EINEN BESTIMMTEN ZWECK.&lt;/p&gt;&lt;/small&gt;</translation>
    </message>
    <message>
        <source>No VYR Camera Found</source>
        <translation>Keine VYR-Kamera gefunden</translation>
    </message>
    <message>
        <source>About VYR Dashboard</source>
        <translation>Über VYR Dashboard</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
</context>
<context>
    <name>AppsTab</name>
    <message>
        <source>Name: </source>
        <translation>Name: </translation>
    </message>
    <message>
        <source>Version: </source>
        <translation>Version: </translation>
    </message>
    <message>
        <source>Description: </source>
        <translation>Beschreibung: </translation>
    </message>
    <message>
        <source>Available Apps/Plugins</source>
        <translation>Verfügbare Apps/Plug-ins</translation>
    </message>
    <message>
        <source>OK or a double-click on an app makes it the current one</source>
        <translation>OK oder ein Doppelklick auf eine App wechselt zu ihr</translation>
    </message>
</context>
<context>
    <name>DevicesTab</name>
    <message>
        <source>Title</source>
        <translation>Bezeichnung</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Angaben</translation>
    </message>
    <message>
        <source>VYR Device</source>
        <translation>VYR-Gerät</translation>
    </message>
    <message>
        <source>Device Name</source>
        <translation>Gerätename</translation>
    </message>
    <message>
        <source>Serial Number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Firmware Version</source>
        <translation>Firmware-Version</translation>
    </message>
    <message>
        <source>Firmware Build Time</source>
        <translation>Firmware erstellt am</translation>
    </message>
    <message>
        <source>Software Version</source>
        <translation>Software-Version</translation>
    </message>
    <message>
        <source>Available Devices</source>
        <translation>Verfügbare Geräte</translation>
    </message>
    <message>
        <source>What the camera and its library say of themselves</source>
        <translation>Was die Kamera und ihre Bibliothek über sich angeben</translation>
    </message>
</context>
<context>
    <name>ResolutionSettings</name>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Binning</source>
        <translation>Binning</translation>
    </message>
    <message>
        <source>How many columns are read; goes to the next width that the camera has</source>
        <translation>Wie viele Spalten gelesen werden; springt zur nächsten Breite, die die Kamera kennt</translation>
    </message>
    <message>
        <source>How many rows are read; goes to the next height that the camera has</source>
        <translation>Wie viele Zeilen gelesen werden; springt zur nächsten Höhe, die die Kamera kennt</translation>
    </message>
    <message>
        <source>How many pixels of the sensor are read as one, across x down</source>
        <translation>Wie viele Pixel des Sensors zu einem zusammengefasst werden, waagrecht x senkrecht</translation>
    </message>
    <message>
        <source>Frames per second</source>
        <translation>Bilder pro Sekunde</translation>
    </message>
    <message>
        <source>Framerate</source>
        <translation>Bildrate</translation>
    </message>
</context>
<context>
    <name>ResolutionVisualization</name>
    <message>
        <source>Capture window on the sensor</source>
        <translation>Aufnahmefenster auf dem Sensor</translation>
    </message>
    <message>
        <source>Drag the edges of the capture window,
or use the arrow keys: sideways for its width, up and down for its height</source>
        <translation>Ziehen Sie die Ränder des Aufnahmefensters,
oder benutzen Sie die Pfeiltasten: links und rechts für die Breite, auf und ab für die Höhe</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Puts the choices into effect and closes the dialog</source>
        <translation>Übernimmt die Auswahl und schließt den Dialog</translation>
    </message>
    <message>
        <source>Closes the dialog; app and capture mode stay</source>
        <translation>Schließt den Dialog; App und Aufnahmemodus bleiben</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>Which app is shown</source>
        <translation>Welche App gezeigt wird</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Size, binning and rate of the camera&apos;s pictures</source>
        <translation>Größe, Binning und Rate der Kamerabilder</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>Which camera is attached</source>
        <translation>Welche Kamera angeschlossen ist</translation>
    </message>
</context>
</TS>
