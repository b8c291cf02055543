<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>MenuBarItem</name>
    <message>
        <source>Sounds</source>
        <translation>Sons</translation>
    </message>
    <message>
        <source>Open Clavo</source>
        <translation>Ouvrir Clavo</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
</context>
<context>
    <name>MenuHeader</name>
    <message>
        <source>Sounds</source>
        <translation>Sons</translation>
    </message>
    <message>
        <source>Turn on / off (⇧⌘K)</source>
        <translation>Activer / désactiver (⇧⌘K)</translation>
    </message>
</context>
<context>
    <name>MenuView</name>
    <message>
        <source>keys today</source>
        <translation>touches ce jour</translation>
    </message>
    <message>
        <source>streak</source>
        <translation>série</translation>
    </message>
    <message>
        <source>best WPM</source>
        <translation>record MPM</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
</context>
<context>
    <name>PackCategory</name>
    <message>
        <source>Linear</source>
        <translation>Linéaires</translation>
    </message>
    <message>
        <source>Tactile</source>
        <translation>Tactiles</translation>
    </message>
    <message>
        <source>Clicky</source>
        <translation>Cliquants</translation>
    </message>
    <message>
        <source>Special</source>
        <translation>Spéciaux</translation>
    </message>
    <message>
        <source>My packs</source>
        <translation>Mes packs</translation>
    </message>
</context>
<context>
    <name>PackList</name>
    <message>
        <source>SWITCHES</source>
        <translation>SWITCHS</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Switchs</translation>
    </message>
    <message>
        <source>Hover a switch to hear it, click to choose it.</source>
        <translation>Survolez pour écouter, cliquez pour choisir.</translation>
    </message>
</context>
<context>
    <name>PermissionCard</name>
    <message>
        <source>Permission needed</source>
        <translation>Autorisation requise</translation>
    </message>
    <message>
        <source>Clavo needs to detect that a key moved. It never records what you type.</source>
        <translation>Clavo doit détecter qu’une touche a bougé. Il n’enregistre jamais ce que vous tapez.</translation>
    </message>
    <message>
        <source>Turn on Clavo in the list: it restarts by itself once allowed.</source>
        <translation>Activez Clavo dans la liste : il redémarre de lui-même une fois autorisé.</translation>
    </message>
    <message>
        <source>Open Input Monitoring</source>
        <translation>Ouvrir Surveillance de l’entrée</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Redémarrer</translation>
    </message>
</context>
<context>
    <name>SoundOptions</name>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Key-up sounds</source>
        <translation>Sons au relâchement</translation>
    </message>
    <message>
        <source>Spatial sound (left / right)</source>
        <translation>Son spatial (gauche / droite)</translation>
    </message>
    <message>
        <source>Mouse clicks</source>
        <translation>Clics de souris</translation>
    </message>
    <message>
        <source>Scroll wheel ticks</source>
        <translation>Crans de la molette</translation>
    </message>
</context>
</TS>
