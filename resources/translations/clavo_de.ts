<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutTab</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Mechanical keyboard sounds for your Mac.
Nothing is recorded, nothing is sent.</source>
        <translation>Klänge mechanischer Tastaturen für Ihren Computer.
Nichts wird aufgezeichnet, nichts wird gesendet.</translation>
    </message>
    <message>
        <source>Recordings: Mechvibes open-source project (MIT licence).</source>
        <translation>Aufnahmen: Open-Source-Projekt Mechvibes (MIT-Lizenz).</translation>
    </message>
</context>
<context>
    <name>ConfirmationDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Open Clavo at login</source>
        <translation>Clavo bei der Anmeldung öffnen</translation>
    </message>
    <message>
        <source>Turn on / off from anywhere</source>
        <translation>Von überall ein- und ausschalten</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Restart Clavo to apply the language.</source>
        <translation>Gilt nach einem Neustart von Clavo.</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>Permission</source>
        <translation>Berechtigung</translation>
    </message>
    <message>
        <source>Input Monitoring</source>
        <translation>Eingabeüberwachung</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Erteilt</translation>
    </message>
    <message>
        <source>Grant…</source>
        <translation>Erteilen …</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Read-only: Clavo knows a key moved, never which one you type. It stays silent in password fields.</source>
        <translation>Nur lesend: Clavo weiß, dass sich eine Taste bewegt hat, nie, welche Sie tippen. In Passwortfeldern bleibt es still.</translation>
    </message>
    <message>
        <source>Custom packs</source>
        <translation>Eigene Pakete</translation>
    </message>
    <message>
        <source>Drop one folder per pack containing pack.json and sounds/*.wav. A Mechvibes pack can be converted with scripts/import_mechvibes.py.</source>
        <translation>Legen Sie je Paket einen Ordner mit pack.json und sounds/*.wav ab. Ein Mechvibes-Paket lässt sich mit scripts/import_mechvibes.py umwandeln.</translation>
    </message>
    <message>
        <source>Open packs folder</source>
        <translation>Paketordner öffnen</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
</context>
<context>
    <name>HeroSlide</name>
    <message>
        <source>Your keyboard, now satisfying.</source>
        <translation>Ihre Tastatur, jetzt ein Genuss.</translation>
    </message>
    <message>
        <source>Real mechanical keyboard sounds for every key, right from your menu bar.</source>
        <translation>Echte Klänge mechanischer Tastaturen für jede Taste, direkt aus der Menüleiste.</translation>
    </message>
</context>
<context>
    <name>HotKey</name>
    <message>
        <source>Turn the sounds of Clavo on or off</source>
        <translation>Die Klänge von Clavo ein- oder ausschalten</translation>
    </message>
</context>
<context>
    <name>InstantSlide</name>
    <message>
        <source>Sounds right. Feels instant.</source>
        <translation>Klingt richtig. Kommt sofort.</translation>
    </message>
    <message>
        <source>Each sound starts 2 ms before impact, comes from the key&apos;s position and never repeats exactly.</source>
        <translation>Jeder Klang beginnt 2 ms vor dem Anschlag, kommt vom Ort der Taste und wiederholt sich nie genau.</translation>
    </message>
    <message>
        <source>2 ms</source>
        <translation>2 ms</translation>
    </message>
    <message>
        <source>before impact</source>
        <translation>vor dem Anschlag</translation>
    </message>
    <message>
        <source>pitch variations</source>
        <translation>Tonhöhen</translation>
    </message>
    <message>
        <source>keys recorded</source>
        <translation>aufgenommene Tasten</translation>
    </message>
</context>
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
        <source>No packs found</source>
        <translation>Keine Pakete gefunden</translation>
    </message>
    <message>
        <source>Hover a switch to hear it, click to choose it.</source>
        <translation>Zum Anhören darauf zeigen, zum Auswählen klicken.</translation>
    </message>
</context>
<context>
    <name>PermissionAdvice</name>
    <message>
        <source>The permission is granted and counts from your next login.</source>
        <translation>Die Berechtigung ist erteilt und gilt ab der nächsten Anmeldung.</translation>
    </message>
    <message>
        <source>There is no keyboard to listen to: Clavo restarts by itself once there is one.</source>
        <translation>Es gibt keine Tastatur, auf die Clavo hören könnte: Sobald eine da ist, startet es von selbst neu.</translation>
    </message>
    <message>
        <source>Type these two commands in a terminal: Clavo restarts by itself once allowed.</source>
        <translation>Geben Sie diese beiden Befehle in einem Terminal ein: Sobald es darf, startet Clavo von selbst neu.</translation>
    </message>
    <message>
        <source>Turn on Clavo in the list: it restarts by itself once allowed.</source>
        <translation>Schalten Sie Clavo in der Liste ein: Sobald es darf, startet es von selbst neu.</translation>
    </message>
    <message>
        <source>Commands that grant the permission</source>
        <translation>Befehle, die die Berechtigung erteilen</translation>
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
        <source>Open Input Monitoring</source>
        <translation>Einstellung öffnen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Neu starten</translation>
    </message>
</context>
<context>
    <name>PrivacySlide</name>
    <message>
        <source>Private by design.</source>
        <translation>Privat von Grund auf.</translation>
    </message>
    <message>
        <source>Clavo hears that a key moved, never which one.</source>
        <translation>Clavo hört, dass sich eine Taste bewegt, nie welche.</translation>
    </message>
    <message>
        <source>Nothing recorded, nothing sent</source>
        <translation>Nichts aufgezeichnet, nichts gesendet</translation>
    </message>
    <message>
        <source>Silent in password fields</source>
        <translation>Stumm in Passwortfeldern</translation>
    </message>
    <message>
        <source>Mute anywhere with ⇧⌘K</source>
        <translation>Überall stumm mit ⇧⌘K</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
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
<context>
    <name>StatsChart</name>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
</context>
<context>
    <name>StatsSlide</name>
    <message>
        <source>Your typing, in numbers.</source>
        <translation>Ihr Tippen in Zahlen.</translation>
    </message>
    <message>
        <source>Keys per day, streaks and your best speed. Stored only on your Mac.</source>
        <translation>Tasten pro Tag, Serien und Ihr bestes Tempo. Nur auf Ihrem Computer gespeichert.</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
</context>
<context>
    <name>StatsTab</name>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Streak</source>
        <translation>Serie</translation>
    </message>
    <message>
        <source>%1 d</source>
        <translation>%1 T</translation>
    </message>
    <message>
        <source>Best</source>
        <translation>Rekord</translation>
    </message>
    <message>
        <source>%1 WPM</source>
        <translation>%1 WPM</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>A day counts toward the streak from %1 keys. Stored only on this Mac.</source>
        <translation>Ein Tag zählt ab %1 Tasten zur Serie. Nur auf diesem Computer gespeichert.</translation>
    </message>
    <message>
        <source>Export as JSON…</source>
        <translation>Als JSON exportieren …</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>Zurücksetzen …</translation>
    </message>
    <message>
        <source>Erase all statistics?</source>
        <translation>Alle Statistiken löschen?</translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>clavo::LanguageSetting</name>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
</context>
<context>
    <name>SwitchesSlide</name>
    <message>
        <source>8 real switches, recorded key by key.</source>
        <translation>8 echte Schalter, Taste für Taste aufgenommen.</translation>
    </message>
    <message>
        <source>Linear, tactile, clicky or Topre. Hover to hear, click to switch.</source>
        <translation>Linear, taktil, klickend oder Topre. Zeigen zum Hören, klicken zum Wechseln.</translation>
    </message>
</context>
</TS>
