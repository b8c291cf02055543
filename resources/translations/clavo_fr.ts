<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AboutTab</name>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Mechanical keyboard sounds for your Mac.
Nothing is recorded, nothing is sent.</source>
        <translation>Les sons d’un clavier mécanique sur votre ordinateur.
Rien n’est enregistré, rien n’est envoyé.</translation>
    </message>
    <message>
        <source>Recordings: Mechvibes open-source project (MIT licence).</source>
        <translation>Enregistrements : projet libre Mechvibes (licence MIT).</translation>
    </message>
</context>
<context>
    <name>ConfirmationDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Open Clavo at login</source>
        <translation>Ouvrir Clavo à l’ouverture de session</translation>
    </message>
    <message>
        <source>Turn on / off from anywhere</source>
        <translation>Activer / désactiver de partout</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>Restart Clavo to apply the language.</source>
        <translation>Redémarrez Clavo pour appliquer la langue.</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Redémarrer</translation>
    </message>
    <message>
        <source>Permission</source>
        <translation>Autorisation</translation>
    </message>
    <message>
        <source>Input Monitoring</source>
        <translation>Surveillance de l’entrée</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Accordée</translation>
    </message>
    <message>
        <source>Grant…</source>
        <translation>Accorder…</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Read-only: Clavo knows a key moved, never which one you type. It stays silent in password fields.</source>
        <translation>Lecture seule : Clavo sait qu’une touche a bougé, jamais laquelle. Il reste silencieux dans les champs de mot de passe.</translation>
    </message>
    <message>
        <source>Custom packs</source>
        <translation>Packs personnels</translation>
    </message>
    <message>
        <source>Drop one folder per pack containing pack.json and sounds/*.wav. A Mechvibes pack can be converted with scripts/import_mechvibes.py.</source>
        <translation>Déposez un dossier par pack, contenant pack.json et sounds/*.wav. Un pack Mechvibes se convertit avec scripts/import_mechvibes.py.</translation>
    </message>
    <message>
        <source>Open packs folder</source>
        <translation>Ouvrir le dossier des packs</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Actualiser</translation>
    </message>
</context>
<context>
    <name>HeroSlide</name>
    <message>
        <source>Your keyboard, now satisfying.</source>
        <translation>Votre clavier, enfin un plaisir.</translation>
    </message>
    <message>
        <source>Real mechanical keyboard sounds for every key, right from your menu bar.</source>
        <translation>De vrais sons de clavier mécanique pour chaque touche, depuis la barre des menus.</translation>
    </message>
</context>
<context>
    <name>HotKey</name>
    <message>
        <source>Turn the sounds of Clavo on or off</source>
        <translation>Activer ou désactiver les sons de Clavo</translation>
    </message>
</context>
<context>
    <name>InstantSlide</name>
    <message>
        <source>Sounds right. Feels instant.</source>
        <translation>Le bon son. À l’instant.</translation>
    </message>
    <message>
        <source>Each sound starts 2 ms before impact, comes from the key&apos;s position and never repeats exactly.</source>
        <translation>Chaque son commence 2 ms avant l’impact, vient de la place de la touche et ne se répète jamais à l’identique.</translation>
    </message>
    <message>
        <source>2 ms</source>
        <translation>2 ms</translation>
    </message>
    <message>
        <source>before impact</source>
        <translation>avant l’impact</translation>
    </message>
    <message>
        <source>pitch variations</source>
        <translation>variations de hauteur</translation>
    </message>
    <message>
        <source>keys recorded</source>
        <translation>touches enregistrées</translation>
    </message>
</context>
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
        <source>No packs found</source>
        <translation>Aucun pack trouvé</translation>
    </message>
    <message>
        <source>Hover a switch to hear it, click to choose it.</source>
        <translation>Survolez pour écouter, cliquez pour choisir.</translation>
    </message>
</context>
<context>
    <name>PermissionAdvice</name>
    <message>
        <source>The permission is granted and counts from your next login.</source>
        <translation>L’autorisation est accordée et vaut à partir de votre prochaine connexion.</translation>
    </message>
    <message>
        <source>There is no keyboard to listen to: Clavo restarts by itself once there is one.</source>
        <translation>Aucun clavier à écouter : Clavo redémarre de lui-même dès qu’il y en a un.</translation>
    </message>
    <message>
        <source>Type these two commands in a terminal: Clavo restarts by itself once allowed.</source>
        <translation>Tapez ces deux commandes dans un terminal : Clavo redémarre de lui-même une fois autorisé.</translation>
    </message>
    <message>
        <source>Turn on Clavo in the list: it restarts by itself once allowed.</source>
        <translation>Activez Clavo dans la liste : il redémarre de lui-même une fois autorisé.</translation>
    </message>
    <message>
        <source>Commands that grant the permission</source>
        <translation>Commandes qui accordent l’autorisation</translation>
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
        <source>Open Input Monitoring</source>
        <translation>Ouvrir le réglage</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Restart now</source>
        <translation>Redémarrer</translation>
    </message>
</context>
<context>
    <name>PrivacySlide</name>
    <message>
        <source>Private by design.</source>
        <translation>Privé par conception.</translation>
    </message>
    <message>
        <source>Clavo hears that a key moved, never which one.</source>
        <translation>Clavo entend qu’une touche a bougé, jamais laquelle.</translation>
    </message>
    <message>
        <source>Nothing recorded, nothing sent</source>
        <translation>Rien d’enregistré, rien d’envoyé</translation>
    </message>
    <message>
        <source>Silent in password fields</source>
        <translation>Muet dans les champs de mot de passe</translation>
    </message>
    <message>
        <source>Mute anywhere with ⇧⌘K</source>
        <translation>Muet partout avec ⇧⌘K</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistiques</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
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
<context>
    <name>StatsChart</name>
    <message>
        <source>Keys</source>
        <translation>Touches</translation>
    </message>
</context>
<context>
    <name>StatsSlide</name>
    <message>
        <source>Your typing, in numbers.</source>
        <translation>Votre frappe, en chiffres.</translation>
    </message>
    <message>
        <source>Keys per day, streaks and your best speed. Stored only on your Mac.</source>
        <translation>Touches par jour, séries et meilleure vitesse. Stockées uniquement sur votre ordinateur.</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistiques</translation>
    </message>
</context>
<context>
    <name>StatsTab</name>
    <message>
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>Streak</source>
        <translation>Série</translation>
    </message>
    <message>
        <source>%1 d</source>
        <translation>%1 j</translation>
    </message>
    <message>
        <source>Best</source>
        <translation>Record</translation>
    </message>
    <message>
        <source>%1 WPM</source>
        <translation>%1 MPM</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Total</translation>
    </message>
    <message>
        <source>A day counts toward the streak from %1 keys. Stored only on this Mac.</source>
        <translation>Un jour compte dans la série à partir de %1 touches. Conservé uniquement sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Export as JSON…</source>
        <translation>Exporter en JSON…</translation>
    </message>
    <message>
        <source>Reset…</source>
        <translation>Réinitialiser…</translation>
    </message>
    <message>
        <source>Erase all statistics?</source>
        <translation>Effacer toutes les statistiques ?</translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>Effacer</translation>
    </message>
</context>
<context>
    <name>clavo::LanguageSetting</name>
    <message>
        <source>System</source>
        <translation>Système</translation>
    </message>
</context>
<context>
    <name>SwitchesSlide</name>
    <message>
        <source>8 real switches, recorded key by key.</source>
        <translation>8 vrais switchs, enregistrés touche par touche.</translation>
    </message>
    <message>
        <source>Linear, tactile, clicky or Topre. Hover to hear, click to switch.</source>
        <translation>Linéaire, tactile, clicky ou Topre. Survolez pour écouter, cliquez pour changer.</translation>
    </message>
</context>
</TS>
