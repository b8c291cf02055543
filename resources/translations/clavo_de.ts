<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>MenuBarItem</name>
    <message>
        <source>Sounds</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>Open Clavo</source>
        <translation>Clavo öffnen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>MenuHeader</name>
    <message>
        <source>Sounds</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>Turn on / off (⇧⌘K)</source>
        <translation>Ein / aus (⇧⌘K)</translation>
    </message>
</context>
<context>
    <name>MenuView</name>
    <message>
        <source>keys today</source>
        <translation>Tasten heute</translation>
    </message>
    <message>
        <source>streak</source>
        <translation>Serie</translation>
    </message>
    <message>
        <source>best WPM</source>
        <translation>Rekord WPM</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>PackCategory</name>
    <message>
        <source>Linear</source>
        <translation>Linear</translation>
    </message>
    <message>
        <source>Tactile</source>
        <translation>Taktil</translation>
    </message>
    <message>
        <source>Clicky</source>
        <translation>Klickend</translation>
    </message>
    <message>
        <source>Special</source>
        <translation>Spezial</translation>
    </message>
    <message>
        <source>My packs</source>
        <translation>Meine Pakete</translation>
    </message>
</context>
<context>
    <name>PackList</name>
    <message>
        <source>SWITCHES</source>
        <translation>SCHALTER</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Schalter</translation>
    </message>
    <message>
        <source>Hover a switch to hear it, click to choose it.</source>
        <translation>Zum Anhören darauf zeigen, zum Auswählen klicken.</translation>
    </message>
</context>
<context>
    <name>PermissionCard</name>
    <message>
        <source>Permission needed</source>
        <translation>Berechtigung nötig</translation>
    </message>
    <message>
        <source>Clavo needs to detect that a key moved. It never records what you type.</source>
        <translation>Clavo muss erkennen, dass sich eine Taste bewegt hat. Was Sie tippen, wird nie aufgezeichnet.</translation>
    </message>
    <message>
        <source>Turn on Clavo in the list: it restarts by itself once allowed.</source>
        <translation>Schalten Sie Clavo in der Liste ein: Sobald es darf, startet es von selbst neu.</translation>
    </message>
    <message>
        <source>Open Input Monitoring</source>
        <translation>Eingabeüberwachung öffnen</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Jetzt neu starten</translation>
    </message>
</context>
<context>
    <name>SoundOptions</name>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Key-up sounds</source>
        <translation>Töne beim Loslassen</translation>
    </message>
    <message>
        <source>Spatial sound (left / right)</source>
        <translation>Raumklang (links / rechts)</translation>
    </message>
    <message>
        <source>Mouse clicks</source>
        <translation>Mausklicks</translation>
    </message>
    <message>
        <source>Scroll wheel ticks</source>
        <translation>Mausrad-Rasten</translation>
    </message>
</context>
</TS>
