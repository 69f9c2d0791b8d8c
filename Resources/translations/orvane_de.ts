<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>AboutPanel</name>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
<context>
    <name>AwakeText</name>
    <message>
        <source>Awake</source>
        <translation>Wachhalten</translation>
    </message>
    <message>
        <source>Keep your Mac awake on demand — for a set time or until you turn it off.</source>
        <translation>Hält Ihren Rechner auf Wunsch wach – für eine bestimmte Zeit oder bis Sie es ausschalten.</translation>
    </message>
    <message>
        <source>Toggle Keep Awake</source>
        <translation>Wachhalten ein- oder ausschalten</translation>
    </message>
    <message>
        <source>Let Mac Sleep</source>
        <translation>Rechner schlafen lassen</translation>
    </message>
    <message>
        <source>Keep Awake</source>
        <translation>Wach halten</translation>
    </message>
    <message>
        <source>Orvane Awake</source>
        <translation>Orvane: Wachhalten</translation>
    </message>
    <message>
        <source>Until I turn it off</source>
        <translation>Bis ich es ausschalte</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 Minuten</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 Stunde</translation>
    </message>
    <message>
        <source>2 hours</source>
        <translation>2 Stunden</translation>
    </message>
    <message>
        <source>4 hours</source>
        <translation>4 Stunden</translation>
    </message>
    <message>
        <source>Asleep</source>
        <translation>Nicht wach gehalten</translation>
    </message>
    <message>
        <source>Turn Off Awake</source>
        <translation>Wachhalten ausschalten</translation>
    </message>
    <message>
        <source>Keep awake for…</source>
        <translation>Wach halten für …</translation>
    </message>
    <message>
        <source>Awake Settings…</source>
        <translation>Einstellungen zum Wachhalten …</translation>
    </message>
    <message>
        <source>Keep my Mac awake now</source>
        <translation>Meinen Rechner jetzt wach halten</translation>
    </message>
    <message>
        <source>Prevents display and system sleep without touching your power settings.</source>
        <translation>Hält Bildschirm und System wach, ohne Ihre Energieeinstellungen zu ändern.</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Keep the display awake too</source>
        <translation>Auch den Bildschirm wach halten</translation>
    </message>
    <message>
        <source>Like Caffeine — stops the screen from dimming and sleeping. Off keeps only the system awake.</source>
        <translation>Der Bildschirm wird weder dunkel noch ausgeschaltet. Ausgeschaltet bleibt nur das System wach.</translation>
    </message>
    <message>
        <source>Menu Bar</source>
        <translation>Systemleiste</translation>
    </message>
    <message>
        <source>Show a dedicated coffee-cup menu-bar icon</source>
        <translation>Ein eigenes Auge in der Systemleiste zeigen</translation>
    </message>
    <message>
        <source>Click it to toggle Awake; right-click for durations — just like the Caffeine app.</source>
        <translation>Ein Klick schaltet das Wachhalten ein oder aus, ein Rechtsklick zeigt die Dauern.</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Start keeping awake when this feature turns on</source>
        <translation>Mit dem Wachhalten beginnen, sobald die Funktion eingeschaltet wird</translation>
    </message>
    <message>
        <source>Use the coffee-cup icon, the Orvane menu, or a keyboard shortcut to flip Awake on and off from anywhere.</source>
        <translation>Mit dem Auge in der Systemleiste, Orvanes Menü oder einem Tastenkürzel schalten Sie das Wachhalten von überall ein und aus.</translation>
    </message>
    <message>
        <source>Your Mac sleeps normally.</source>
        <translation>Ihr Rechner schläft wie gewohnt.</translation>
    </message>
    <message>
        <source>Awake until you turn it off.</source>
        <translation>Wach, bis Sie es ausschalten.</translation>
    </message>
    <message>
        <source>Awake until %1.</source>
        <translation>Wach bis %1.</translation>
    </message>
    <message>
        <source>Your Mac can&apos;t be kept awake at the moment. Orvane keeps trying.</source>
        <translation>Ihr Rechner kann gerade nicht wach gehalten werden. Orvane versucht es weiter.</translation>
    </message>
</context>
<context>
    <name>ClipboardHistoryText</name>
    <message>
        <source>Clipboard History</source>
        <translation>Zwischenablage-Verlauf</translation>
    </message>
    <message>
        <source>Keep a searchable history of what you copy, and paste from a list — like Windows&apos; Win+V.</source>
        <translation>Merkt sich, was Sie kopieren, zum Suchen und Einfügen aus einer Liste – wie Win+V unter Windows.</translation>
    </message>
    <message>
        <source>Automatically paste the chosen item into the active app.</source>
        <translation>Den gewählten Eintrag von selbst in das aktive Programm einfügen.</translation>
    </message>
    <message>
        <source>Show Clipboard History</source>
        <translation>Zwischenablage-Verlauf zeigen</translation>
    </message>
    <message>
        <source>Clipboard History…</source>
        <translation>Zwischenablage-Verlauf …</translation>
    </message>
    <message>
        <source>Keep up to %1 items</source>
        <translation>Bis zu %1 Einträge behalten</translation>
    </message>
    <message>
        <source>Clear History</source>
        <translation>Verlauf löschen</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Keep history after quitting</source>
        <translation>Verlauf nach dem Beenden behalten</translation>
    </message>
    <message>
        <source>What to Capture</source>
        <translation>Was gemerkt wird</translation>
    </message>
    <message>
        <source>Capture text</source>
        <translation>Text merken</translation>
    </message>
    <message>
        <source>Capture images</source>
        <translation>Bilder merken</translation>
    </message>
    <message>
        <source>Capture copied files</source>
        <translation>Kopierte Dateien merken</translation>
    </message>
    <message>
        <source>Skip items marked private by password managers</source>
        <translation>Übergehen, was Passwortverwaltungen als geheim kennzeichnen</translation>
    </message>
    <message>
        <source>Pasting</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Automatically paste the chosen item</source>
        <translation>Den gewählten Eintrag von selbst einfügen</translation>
    </message>
    <message>
        <source>Needs Accessibility permission. When off, the item is copied and you press ⌘V yourself.</source>
        <translation>Ausgeschaltet wird der Eintrag kopiert, und Sie drücken selbst Strg+V, im Terminal Strg+Umschalt+V.</translation>
    </message>
    <message>
        <source>Storage</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>Clear all unpinned history</source>
        <translation>Alles löschen, was nicht angeheftet ist</translation>
    </message>
    <message>
        <source>Assign a shortcut to open the clipboard history popup in the Keyboard Shortcuts section above.</source>
        <translation>Ein Kürzel, das den Verlauf öffnet, legen Sie oben auf dieser Seite unter „Tastenkürzel“ fest.</translation>
    </message>
    <message>
        <source>Clipboard history</source>
        <translation>Verlauf der Zwischenablage</translation>
    </message>
    <message>
        <source>Unpin</source>
        <translation>Lösen</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Anheften</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Search clipboard…</source>
        <translation>Zwischenablage durchsuchen …</translation>
    </message>
    <message>
        <source>Search clipboard</source>
        <translation>Zwischenablage durchsuchen</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>No clipboard history yet</source>
        <translation>Noch nichts kopiert</translation>
    </message>
    <message>
        <source>Pinned %1</source>
        <translation>Angeheftet: %1</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
</context>
<context>
    <name>ColorPickerText</name>
    <message>
        <source>Color Picker</source>
        <translation>Farbpipette</translation>
    </message>
    <message>
        <source>Pick any color on screen with a magnifier and copy it as HEX, RGB, or HSL.</source>
        <translation>Jede Farbe auf dem Bildschirm unter einer Lupe aufnehmen und als HEX, RGB oder HSL kopieren.</translation>
    </message>
    <message>
        <source>Read the pixels under your cursor to sample their color.</source>
        <translation>Die Pixel unter dem Zeiger lesen, um ihre Farbe aufzunehmen.</translation>
    </message>
    <message>
        <source>Pick a Color</source>
        <translation>Farbe aufnehmen</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Copy color as</source>
        <translation>Farbe kopieren als</translation>
    </message>
    <message>
        <source>Assign a shortcut above, then point at any pixel and click to copy its color. Press Esc to cancel.</source>
        <translation>Legen Sie oben ein Tastenkürzel fest, zeigen Sie dann auf ein Pixel und klicken Sie, um seine Farbe zu kopieren. Esc bricht ab.</translation>
    </message>
    <message>
        <source>HEX  (#1A2B3C)</source>
        <translation>HEX  (#1A2B3C)</translation>
    </message>
    <message>
        <source>RGB  (rgb(26, 43, 60))</source>
        <translation>RGB  (rgb(26, 43, 60))</translation>
    </message>
    <message>
        <source>HSL  (hsl(210, 40%, 17%))</source>
        <translation>HSL  (hsl(210, 40%, 17%))</translation>
    </message>
</context>
<context>
    <name>CoreText</name>
    <message>
        <source>Windows &amp; Switching</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Keyboard &amp; Mouse</source>
        <translation>Tastatur und Maus</translation>
    </message>
    <message>
        <source>Desktop</source>
        <translation>Arbeitsfläche</translation>
    </message>
    <message>
        <source>Finder &amp; Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Start automatically</source>
        <translation>Von selbst starten</translation>
    </message>
    <message>
        <source>Start manually</source>
        <translation>Von Hand starten</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Barrierefreiheit</translation>
    </message>
    <message>
        <source>Move, focus, and read windows of other apps (Alt-Tab, cut &amp; paste).</source>
        <translation>Fenster anderer Programme bewegen, nach vorn holen und lesen.</translation>
    </message>
    <message>
        <source>Input Monitoring</source>
        <translation>Eingabeüberwachung</translation>
    </message>
    <message>
        <source>See keyboard and mouse input to remap keys and buttons.</source>
        <translation>Tastatur und Maus mitlesen, um Tasten umzulegen.</translation>
    </message>
    <message>
        <source>Screen Recording</source>
        <translation>Bildschirmaufnahme</translation>
    </message>
    <message>
        <source>Capture live window thumbnails for the switcher and dock previews.</source>
        <translation>Lesen, was auf dem Bildschirm steht.</translation>
    </message>
    <message>
        <source>Automation</source>
        <translation>Automatisierung</translation>
    </message>
    <message>
        <source>Ask Finder for the selected files and target folder (cut &amp; paste).</source>
        <translation>Die Dateiverwaltung nach den ausgewählten Dateien und dem offenen Ordner fragen.</translation>
    </message>
</context>
<context>
    <name>DailyFrameText</name>
    <message>
        <source>Daily Wallpaper</source>
        <translation>Tägliches Hintergrundbild</translation>
    </message>
    <message>
        <source>Freshen your desktop with a new wallpaper every day from Bing or Unsplash.</source>
        <translation>Bringt jeden Tag ein neues Hintergrundbild von Bing oder Unsplash auf den Schreibtisch.</translation>
    </message>
    <message>
        <source>New Wallpaper Now</source>
        <translation>Jetzt neues Hintergrundbild</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Vorheriges</translation>
    </message>
    <message>
        <source>New Wallpaper</source>
        <translation>Neues Hintergrundbild</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächstes</translation>
    </message>
    <message>
        <source>Wallpaper source</source>
        <translation>Bildquelle</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Region</translation>
    </message>
    <message>
        <source>Apply to all displays</source>
        <translation>Auf allen Bildschirmen zeigen</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Show photo credit</source>
        <translation>Bildnachweis zeigen</translation>
    </message>
    <message>
        <source>Save a copy to Pictures</source>
        <translation>Kopie im Bilderordner sichern</translation>
    </message>
    <message>
        <source>United States</source>
        <translation>Vereinigte Staaten</translation>
    </message>
    <message>
        <source>United Kingdom</source>
        <translation>Vereinigtes Königreich</translation>
    </message>
    <message>
        <source>Canada</source>
        <translation>Kanada</translation>
    </message>
    <message>
        <source>Australia</source>
        <translation>Australien</translation>
    </message>
    <message>
        <source>India</source>
        <translation>Indien</translation>
    </message>
    <message>
        <source>Germany</source>
        <translation>Deutschland</translation>
    </message>
    <message>
        <source>France</source>
        <translation>Frankreich</translation>
    </message>
    <message>
        <source>Spain</source>
        <translation>Spanien</translation>
    </message>
    <message>
        <source>Italy</source>
        <translation>Italien</translation>
    </message>
    <message>
        <source>Japan</source>
        <translation>Japan</translation>
    </message>
    <message>
        <source>China</source>
        <translation>China</translation>
    </message>
    <message>
        <source>Brazil</source>
        <translation>Brasilien</translation>
    </message>
    <message>
        <source>The data couldn’t be read because it isn’t in the correct format.</source>
        <translation>Die Daten konnten nicht gelesen werden, da sie nicht das richtige Format haben.</translation>
    </message>
    <message>
        <source>Photo by %1 on Unsplash</source>
        <translation>Foto von %1 auf Unsplash</translation>
    </message>
    <message>
        <source>The wallpaper service returned an unexpected response.</source>
        <translation>Der Bilderdienst hat unerwartet geantwortet.</translation>
    </message>
    <message>
        <source>No wallpapers were returned by the service.</source>
        <translation>Der Dienst hat keine Bilder geliefert.</translation>
    </message>
    <message>
        <source>Bing Image of the Day</source>
        <translation>Bing – Bild des Tages</translation>
    </message>
    <message>
        <source>Unsplash (Daylight)</source>
        <translation>Unsplash (Tageslicht)</translation>
    </message>
    <message>
        <source>The folder “%1” can’t be made.</source>
        <translation>Der Ordner „%1“ kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Wallpaper</source>
        <translation>Hintergrundbild</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Wird geladen</translation>
    </message>
</context>
<context>
    <name>DesktopPictureText</name>
    <message>
        <source>The desktop didn’t take the picture: %1</source>
        <translation>Der Schreibtisch hat das Bild nicht angenommen: %1</translation>
    </message>
    <message>
        <source>The desktop’s settings didn’t take the picture.</source>
        <translation>Die Einstellungen des Schreibtischs haben das Bild nicht angenommen.</translation>
    </message>
    <message>
        <source>The desktop’s settings can’t be reached.</source>
        <translation>Die Einstellungen des Schreibtischs sind nicht erreichbar.</translation>
    </message>
    <message>
        <source>The desktop didn’t take the picture.</source>
        <translation>Der Schreibtisch hat das Bild nicht angenommen.</translation>
    </message>
    <message>
        <source>The picture can’t be read.</source>
        <translation>Das Bild kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The X server doesn’t answer.</source>
        <translation>Der X-Server antwortet nicht.</translation>
    </message>
    <message>
        <source>The X server’s pixels are of an unknown form.</source>
        <translation>Die Bildpunkte des X-Servers haben eine unbekannte Form.</translation>
    </message>
</context>
<context>
    <name>HttpText</name>
    <message>
        <source>The connection ended without an answer.</source>
        <translation>Die Verbindung endete ohne Antwort.</translation>
    </message>
    <message>
        <source>The server hasn’t answered for too long.</source>
        <translation>Der Server hat zu lange nicht geantwortet.</translation>
    </message>
    <message>
        <source>The server sends more than is loaded.</source>
        <translation>Der Server sendet mehr, als geladen wird.</translation>
    </message>
    <message>
        <source>Only secure addresses are loaded.</source>
        <translation>Nur sichere Adressen werden geladen.</translation>
    </message>
</context>
<context>
    <name>ImageResizerText</name>
    <message>
        <source>Image Resizer</source>
        <translation>Bildgröße ändern</translation>
    </message>
    <message>
        <source>Drop images and batch-resize them to a preset or custom size — saved next to the originals.</source>
        <translation>Ändert die Größe vieler Bilder auf einmal, nach Vorgabe oder eigenem Maß – gespeichert neben den Originalen.</translation>
    </message>
    <message>
        <source>Open Image Resizer</source>
        <translation>„Bildgröße ändern“ öffnen</translation>
    </message>
    <message>
        <source>Image Resizer…</source>
        <translation>Bildgröße ändern …</translation>
    </message>
    <message>
        <source>Resize to</source>
        <translation>Zielgröße</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>Speichern als</translation>
    </message>
    <message>
        <source>Open the resizer (here, a shortcut, or the menu bar), drop images in, and resize. Resized copies are saved next to the originals.</source>
        <translation>Öffnen Sie das Fenster (hier, mit einem Tastenkürzel oder aus Orvanes Menü in der Systemleiste) und ziehen Sie Bilder hinein. Die Kopien werden neben den Originalen gespeichert.</translation>
    </message>
    <message>
        <source>Same as original</source>
        <translation>Wie das Original</translation>
    </message>
    <message>
        <source>PNG</source>
        <translation>PNG</translation>
    </message>
    <message>
        <source>JPEG</source>
        <translation>JPEG</translation>
    </message>
    <message>
        <source>Small</source>
        <translation>Klein</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Large</source>
        <translation>Groß</translation>
    </message>
    <message>
        <source>Phone</source>
        <translation>Telefon</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigene</translation>
    </message>
    <message>
        <source>Small — 854 × 480</source>
        <translation>Klein – 854 × 480</translation>
    </message>
    <message>
        <source>Medium — 1366 × 768</source>
        <translation>Mittel – 1366 × 768</translation>
    </message>
    <message>
        <source>Large — 1920 × 1080</source>
        <translation>Groß – 1920 × 1080</translation>
    </message>
    <message>
        <source>Phone — 750 × 1334</source>
        <translation>Telefon – 750 × 1334</translation>
    </message>
    <message>
        <source>Drop images here</source>
        <translation>Bilder hierher ziehen</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Images to resize</source>
        <translation>Zu ändernde Bilder</translation>
    </message>
    <message>
        <source>Resizing %1…</source>
        <translation>%1 werden geändert …</translation>
    </message>
    <message numerus="yes">
        <source>Resized %1 of %n image — saved next to the originals.</source>
        <translation>
            <numerusform>%1 von %n Bild geändert – gespeichert neben dem Original.</numerusform>
            <numerusform>%1 von %n Bildern geändert – gespeichert neben den Originalen.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Resized %1 of %n images — saved next to the originals.</source>
        <translation>
            <numerusform>%1 von %n Bild geändert – gespeichert neben dem Original.</numerusform>
            <numerusform>%1 von %n Bildern geändert – gespeichert neben den Originalen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Max size</source>
        <translation>Höchstmaß</translation>
    </message>
    <message>
        <source>W</source>
        <comment>width</comment>
        <translation>B</translation>
    </message>
    <message>
        <source>Maximum width in pixels</source>
        <translation>Größte Breite in Pixeln</translation>
    </message>
    <message>
        <source>H</source>
        <comment>height</comment>
        <translation>H</translation>
    </message>
    <message>
        <source>Maximum height in pixels</source>
        <translation>Größte Höhe in Pixeln</translation>
    </message>
    <message>
        <source>px</source>
        <comment>pixels</comment>
        <translation>px</translation>
    </message>
    <message>
        <source>Preset</source>
        <translation>Vorgabe</translation>
    </message>
    <message>
        <source>Allow enlarging smaller images</source>
        <translation>Kleinere Bilder vergrößern</translation>
    </message>
    <message>
        <source>%1%</source>
        <comment>percent</comment>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>JPEG quality</source>
        <translation>JPEG-Qualität</translation>
    </message>
    <message numerus="yes">
        <source>Resize %n Image</source>
        <translation>
            <numerusform>%n Bild ändern</numerusform>
            <numerusform>%n Bilder ändern</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Resize %n Images</source>
        <translation>
            <numerusform>%n Bild ändern</numerusform>
            <numerusform>%n Bilder ändern</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Resizing</source>
        <translation>Größe wird geändert</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
</context>
<context>
    <name>KeyNames</name>
    <message>
        <source>Insert</source>
        <translation>Einfg</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Num-Taste</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menütaste</translation>
    </message>
    <message>
        <source>Muhenkan</source>
        <translation>Muhenkan</translation>
    </message>
    <message>
        <source>Henkan</source>
        <translation>Henkan</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>Ton aus</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Print Screen</source>
        <translation>Druck</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Previous Track</source>
        <translation>Voriger Titel</translation>
    </message>
    <message>
        <source>Next Track</source>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Microphone Mute</source>
        <translation>Mikrofon aus</translation>
    </message>
    <message>
        <source>Brightness Up</source>
        <translation>Heller</translation>
    </message>
    <message>
        <source>Brightness Down</source>
        <translation>Dunkler</translation>
    </message>
    <message>
        <source>Web Browser</source>
        <translation>Webbrowser</translation>
    </message>
</context>
<context>
    <name>KeySwapText</name>
    <message>
        <source>Everywhere except these apps</source>
        <translation>Überall außer in diesen Programmen</translation>
    </message>
    <message>
        <source>Only in these apps</source>
        <translation>Nur in diesen Programmen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Add App…</source>
        <translation>Programm hinzufügen …</translation>
    </message>
    <message>
        <source>Ctrl Shortcuts</source>
        <translation>Strg-Kürzel</translation>
    </message>
    <message>
        <source>Use Windows-style Ctrl+C / Ctrl+V / Ctrl+Z everywhere — Orvane maps Ctrl to Cmd.</source>
        <translation>Strg+C, Strg+V und Strg+Z auch im Terminal wie in jedem anderen Programm – oder Strg und Super vertauscht.</translation>
    </message>
    <message>
        <source>See and rewrite keyboard events to remap Ctrl to Cmd.</source>
        <translation>Tastendrücke sehen und ändern, damit Strg anders wirken kann.</translation>
    </message>
    <message>
        <source>Some macOS versions require Accessibility to modify key events in secure fields.</source>
        <translation>Erkennen, welches Programm vorn ist, damit die Ausnahmen gelten.</translation>
    </message>
    <message>
        <source>Ctrl with A, C, F, N, R, S, T, V, W, X or Z becomes the command of the app in front. Cmd stays Cmd, and every other key stays as it is.</source>
        <translation>Strg mit A, C, F, N, R, S, T, V, W, X oder Z bedeutet, was es in den meisten Programmen bedeutet. Strg+C kopiert schon überall außer im Terminal, wo es abbricht: Nehmen Sie ein Terminal aus der Liste unten, und es kopiert auch dort. Jede andere Taste bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>Cmd (on many keyboards Super, the key with a logo) acts as Ctrl and Ctrl acts as Cmd: with every key, with a click and alone. Shortcuts with ⌘, Orvane&apos;s and the system&apos;s, are pressed with Ctrl, except in the apps left out below.</source>
        <translation>Super (die Taste mit dem Logo) wirkt als Strg und Strg als Super: mit jeder Taste, mit einem Klick und allein. Kürzel mit Super, die von Orvane wie die der Arbeitsumgebung, werden mit Strg gedrückt, außer in den unten ausgenommenen Programmen.</translation>
    </message>
    <message>
        <source>Every key stays as it is.</source>
        <translation>Jede Taste bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>Full swap changes every Ctrl/Cmd shortcut — including system ones. Use with care.</source>
        <translation>Das Vertauschen ändert jedes Kürzel mit Strg oder Super, auch die der Arbeitsumgebung. Mit Bedacht verwenden.</translation>
    </message>
    <message>
        <source>Remapping</source>
        <translation>Umlegen</translation>
    </message>
    <message>
        <source>App Exclusions</source>
        <translation>Ausnahmen</translation>
    </message>
    <message>
        <source>Apply remapping</source>
        <translation>Umlegen</translation>
    </message>
    <message>
        <source>Terminals and IDEs are excluded by default so Ctrl+C keeps working there.</source>
        <translation>Terminals und Entwicklungsumgebungen sind anfangs ausgenommen, damit Strg+C dort weiter abbricht.</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Common shortcuts — ⌃C / ⌃V / ⌃X / ⌃Z / ⌃A become ⌘</source>
        <translation>Übliche Kürzel – Strg+C / Strg+V / Strg+X / Strg+Z / Strg+A wie in den meisten Programmen</translation>
    </message>
    <message>
        <source>Swap Ctrl and Cmd everywhere</source>
        <translation>Strg und Super überall vertauschen</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>Nicht installiert</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminals</translation>
    </message>
    <message>
        <source>WezTerm</source>
        <translation>WezTerm</translation>
    </message>
    <message>
        <source>iTerm2</source>
        <translation>iTerm2</translation>
    </message>
    <message>
        <source>JetBrains IDEs</source>
        <translation>JetBrains-Entwicklungsumgebungen</translation>
    </message>
    <message>
        <source>Visual Studio Code</source>
        <translation>Visual Studio Code</translation>
    </message>
    <message>
        <source>Ghostty</source>
        <translation>Ghostty</translation>
    </message>
    <message>
        <source>Code - OSS</source>
        <translation>Code - OSS</translation>
    </message>
    <message>
        <source>Warp</source>
        <translation>Warp</translation>
    </message>
    <message>
        <source>Alacritty (before 0.5)</source>
        <translation>Alacritty (vor 0.5)</translation>
    </message>
    <message>
        <source>kitty</source>
        <translation>kitty</translation>
    </message>
    <message>
        <source>Alacritty</source>
        <translation>Alacritty</translation>
    </message>
    <message>
        <source>Emacs</source>
        <translation>Emacs</translation>
    </message>
    <message>
        <source>MacVim</source>
        <translation>Vim</translation>
    </message>
</context>
<context>
    <name>KeyText</name>
    <message>
        <source>↩</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>⌫</source>
        <translation>Rücktaste</translation>
    </message>
    <message>
        <source>⌦</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>↘</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>⎋</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>?⃝</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>↖</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>⇥</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>⇞</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>⇟</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>↑</source>
        <translation>Pfeil auf</translation>
    </message>
    <message>
        <source>→</source>
        <translation>Pfeil rechts</translation>
    </message>
    <message>
        <source>↓</source>
        <translation>Pfeil ab</translation>
    </message>
    <message>
        <source>←</source>
        <translation>Pfeil links</translation>
    </message>
    <message>
        <source>☒</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>%1⃣</source>
        <comment>a key of the keypad</comment>
        <translation>Num %1</translation>
    </message>
    <message>
        <source>⌃</source>
        <translation>Strg+</translation>
    </message>
    <message>
        <source>⌥</source>
        <translation>Alt+</translation>
    </message>
    <message>
        <source>⇧</source>
        <translation>Umschalt+</translation>
    </message>
    <message>
        <source>⌘</source>
        <translation>Super+</translation>
    </message>
    <message>
        <source>🌐︎</source>
        <translation>Fn+</translation>
    </message>
    <message>
        <source>⌃⌥⇧⌘</source>
        <comment>These four in the order in which a shortcut is written</comment>
        <translation>⌘⌃⌥⇧</translation>
    </message>
</context>
<context>
    <name>KeyboardShortcutsText</name>
    <message>
        <source>Press it to record: the next keys become the shortcut. Escape leaves it as it is, Delete clears it.</source>
        <translation>Zum Aufnehmen drücken: Die nächsten Tasten werden das Tastenkürzel. Escape lässt es, wie es ist, die Löschtaste löscht es.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Clear shortcut</source>
        <translation>Tastenkürzel löschen</translation>
    </message>
    <message>
        <source>Record shortcut</source>
        <translation>Kürzel aufnehmen</translation>
    </message>
    <message>
        <source>Press keys…</source>
        <translation>Tasten drücken …</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>The menu item “%1” already has this shortcut.</source>
        <translation>Dieses Tastenkürzel gehört schon zum Menüeintrag „%1“.</translation>
    </message>
    <message>
        <source>The desktop already uses this shortcut.</source>
        <translation>Die Arbeitsumgebung verwendet dieses Tastenkürzel bereits.</translation>
    </message>
    <message>
        <source>Choose another one here, or change the desktop’s in its keyboard settings.</source>
        <translation>Wählen Sie hier ein anderes, oder ändern Sie das der Arbeitsumgebung in ihren Tastatureinstellungen.</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Rücktaste</translation>
    </message>
    <message>
        <source>Forward Delete</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Pfeil auf</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Pfeil rechts</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Pfeil ab</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Pfeil links</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Control</source>
        <translation>Steuerung</translation>
    </message>
    <message>
        <source>Option</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>Key %1</source>
        <translation>Taste %1</translation>
    </message>
    <message>
        <source>Keypad %1</source>
        <translation>Ziffernblock %1</translation>
    </message>
</context>
<context>
    <name>KitText</name>
    <message>
        <source>Search applications</source>
        <translation>Programme suchen</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>Programm wählen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>No applications were found.</source>
        <translation>Es wurden keine Programme gefunden.</translation>
    </message>
    <message>
        <source>No application matches “%1”.</source>
        <translation>Kein Programm passt zu „%1“.</translation>
    </message>
    <message>
        <source>%1 is on the list already.</source>
        <translation>%1 steht schon auf der Liste.</translation>
    </message>
    <message>
        <source>This application has no identifier, so it can&apos;t be chosen.</source>
        <translation>Dieses Programm hat keine Kennung und kann darum nicht gewählt werden.</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>Hinzugefügt</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>Needs permission</source>
        <translation>Braucht Berechtigung</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>LinuxText</name>
    <message>
        <source>In this Wayland session shortcuts would work only while an X11 program has the focus, so they are off. In an X11 session they work everywhere.</source>
        <translation>In dieser Wayland-Sitzung wirkten Tastenkürzel nur, solange ein X11-Programm den Fokus hat, darum sind sie aus. In einer X11-Sitzung wirken sie überall.</translation>
    </message>
    <message>
        <source>There is no X server, through which Orvane gets its shortcuts.</source>
        <translation>Es gibt keinen X-Server, über den Orvane seine Tastenkürzel erhält.</translation>
    </message>
    <message>
        <source>In this Wayland session Orvane would miss what you copy in Wayland programs, so this stays off. In an X11 session it gets every copy.</source>
        <translation>In dieser Wayland-Sitzung entginge Orvane, was Sie in Wayland-Programmen kopieren, darum bleibt dies aus. In einer X11-Sitzung erhält es jede Kopie.</translation>
    </message>
    <message>
        <source>There is no X server, through which Orvane gets what you copy.</source>
        <translation>Es gibt keinen X-Server, über den Orvane erhält, was Sie kopieren.</translation>
    </message>
    <message>
        <source>Windows of other programs can&apos;t be moved: no window manager is running that speaks EWMH. Start one.</source>
        <translation>Fenster anderer Programme lassen sich nicht bewegen: Es läuft keine Fensterverwaltung, die EWMH beherrscht. Starten Sie eine.</translation>
    </message>
    <message>
        <source>The file manager can&apos;t be asked for the selected files: none answers on the session bus to org.freedesktop.FileManager1. Install one that does, such as Thunar.</source>
        <translation>Die Dateiverwaltung kann nicht nach den ausgewählten Dateien gefragt werden: Auf dem Sitzungsbus antwortet keine auf org.freedesktop.FileManager1. Installieren Sie eine, die das tut, etwa Thunar.</translation>
    </message>
    <message>
        <source>The file manager can&apos;t be asked for the selected files: the session bus refuses it to this program. The bus&apos;s policy would have to allow it.</source>
        <translation>Die Dateiverwaltung kann nicht nach den ausgewählten Dateien gefragt werden: Der Sitzungsbus verweigert es diesem Programm. Seine Regeln müssten es erlauben.</translation>
    </message>
    <message>
        <source>The file manager can&apos;t be asked for the selected files: it doesn&apos;t answer. End it, and it is started anew when it is needed.</source>
        <translation>Die Dateiverwaltung kann nicht nach den ausgewählten Dateien gefragt werden: Sie antwortet nicht. Beenden Sie sie; sie startet neu, sobald sie gebraucht wird.</translation>
    </message>
    <message>
        <source>This is a Wayland session. Orvane could move the windows of X11 programs alone, not those of others, so it moves none. In an X11 session it moves all.</source>
        <translation>Dies ist eine Wayland-Sitzung. Orvane könnte nur die Fenster von X11-Programmen bewegen, die anderen nicht, darum bewegt es keine. In einer X11-Sitzung bewegt es alle.</translation>
    </message>
    <message>
        <source>This is a Wayland session. Orvane would see keys only while an X11 program has the focus, so it leaves them alone. In an X11 session it sees all.</source>
        <translation>Dies ist eine Wayland-Sitzung. Orvane sähe Tasten nur, solange ein X11-Programm den Fokus hat, darum rührt es sie nicht an. In einer X11-Sitzung sieht es alle.</translation>
    </message>
    <message>
        <source>This is a Wayland session. Orvane could read the windows of X11 programs alone, so it reads none. In an X11 session it reads the whole screen.</source>
        <translation>Dies ist eine Wayland-Sitzung. Orvane könnte nur die Fenster von X11-Programmen lesen, darum liest es keine. In einer X11-Sitzung liest es den ganzen Bildschirm.</translation>
    </message>
    <message>
        <source>This Wayland session has no X server, through which Orvane sees keys, windows and screen. Install Xwayland, or choose an X11 session at login.</source>
        <translation>Diese Wayland-Sitzung hat keinen X-Server, über den Orvane Tasten, Fenster und Bildschirm sieht. Installieren Sie Xwayland, oder wählen Sie beim Anmelden eine X11-Sitzung.</translation>
    </message>
    <message>
        <source>There is no X server, through which Orvane sees keys, windows and screen. Start Orvane from an X11 session.</source>
        <translation>Es gibt keinen X-Server, über den Orvane Tasten, Fenster und Bildschirm sieht. Starten Sie Orvane in einer X11-Sitzung.</translation>
    </message>
    <message>
        <source>The X server doesn&apos;t answer, so this program can neither see input nor read the screen. Try again in a moment.</source>
        <translation>Der X-Server antwortet nicht, darum sieht dieses Programm weder Eingaben noch den Bildschirm. Versuchen Sie es gleich noch einmal.</translation>
    </message>
    <message>
        <source>No X server lets this program in, so it can neither see input nor read the screen. Start it from a desktop session.</source>
        <translation>Kein X-Server lässt dieses Programm zu, darum sieht es weder Eingaben noch den Bildschirm. Starten Sie es auf der Arbeitsfläche.</translation>
    </message>
    <message>
        <source>The X server doesn&apos;t offer XInput and XTEST to this program, so it can neither see nor change keys. A server does so to programs that it doesn&apos;t trust, as those of &quot;ssh -X&quot;: start Orvane on the desktop itself, or with &quot;ssh -Y&quot;.</source>
        <translation>Der X-Server bietet diesem Programm XInput und XTEST nicht an, darum kann es Tasten weder sehen noch ändern. So behandelt ein Server Programme, denen er nicht traut, etwa die von „ssh -X“: Starten Sie Orvane auf der Arbeitsfläche selbst oder mit „ssh -Y“.</translation>
    </message>
    <message>
        <source>The X server&apos;s XInput is older than 2.2, so this program can neither see nor change keys. A newer X server is needed.</source>
        <translation>XInput des X-Servers ist älter als 2.2, darum kann dieses Programm Tasten weder sehen noch ändern. Dazu braucht es einen neueren X-Server.</translation>
    </message>
    <message>
        <source>The X server refuses to let this program hold the keyboard. Its security policy would have to allow it.</source>
        <translation>Der X-Server lässt nicht zu, dass dieses Programm die Tastatur festhält. Seine Sicherheitsregeln müssten es erlauben.</translation>
    </message>
    <message>
        <source>The X server refuses to let this program read the screen. A server does so to programs that it doesn&apos;t trust, as those of &quot;ssh -X&quot;: start Orvane on the desktop itself, or with &quot;ssh -Y&quot;.</source>
        <translation>Der X-Server lässt nicht zu, dass dieses Programm den Bildschirm liest. So behandelt ein Server Programme, denen er nicht traut, etwa die von „ssh -X“: Starten Sie Orvane auf der Arbeitsfläche selbst oder mit „ssh -Y“.</translation>
    </message>
</context>
<context>
    <name>MouseToolsText</name>
    <message>
        <source>Mouse Tools</source>
        <translation>Mauswerkzeuge</translation>
    </message>
    <message>
        <source>Find your cursor with a spotlight (double-tap Ctrl) and toggle crosshairs that follow it.</source>
        <translation>Den Zeiger mit einem Lichtkreis finden (zweimal Strg) und ein Fadenkreuz einschalten, das ihm folgt.</translation>
    </message>
    <message>
        <source>Detect the double-Ctrl gesture for the spotlight. Shortcuts work without it.</source>
        <translation>Das zweimalige Drücken von Strg für den Lichtkreis erkennen. Tastenkürzel gehen auch ohne.</translation>
    </message>
    <message>
        <source>Find My Cursor (Spotlight)</source>
        <translation>Zeiger finden (Lichtkreis)</translation>
    </message>
    <message>
        <source>Toggle Crosshairs</source>
        <translation>Fadenkreuz ein oder aus</translation>
    </message>
    <message>
        <source>Find My Cursor</source>
        <translation>Zeiger finden</translation>
    </message>
    <message>
        <source>Flash a spotlight when I double-press Ctrl</source>
        <translation>Bei zweimaligem Drücken von Strg einen Lichtkreis zeigen</translation>
    </message>
    <message>
        <source>Spotlight size</source>
        <translation>Größe des Lichtkreises</translation>
    </message>
    <message>
        <source>Dim amount</source>
        <translation>Abdunklung</translation>
    </message>
    <message>
        <source>Detecting the double-Ctrl gesture needs Input Monitoring; the shortcut works without it.</source>
        <translation>Das zweimalige Drücken von Strg zu erkennen braucht die Eingabeüberwachung; das Tastenkürzel geht ohne sie.</translation>
    </message>
    <message>
        <source>Crosshairs</source>
        <translation>Fadenkreuz</translation>
    </message>
    <message>
        <source>Line thickness</source>
        <translation>Stärke der Linien</translation>
    </message>
    <message>
        <source>Line opacity</source>
        <translation>Deckkraft der Linien</translation>
    </message>
    <message>
        <source>Assign shortcuts above for the spotlight and crosshairs toggle.</source>
        <translation>Legen Sie oben Tastenkürzel für den Lichtkreis und das Fadenkreuz fest.</translation>
    </message>
    <message>
        <source>pt</source>
        <comment>points</comment>
        <translation>px</translation>
    </message>
</context>
<context>
    <name>PlainPasteText</name>
    <message>
        <source>Paste as Plain Text</source>
        <translation>Als reinen Text einfügen</translation>
    </message>
    <message>
        <source>A hotkey that pastes your clipboard with all fonts, colors, and styles stripped away.</source>
        <translation>Ein Tastenkürzel, das die Zwischenablage ohne Schriften, Farben und Formate einfügt.</translation>
    </message>
    <message>
        <source>Paste the cleaned text automatically. Without it, the clipboard is cleaned and you press ⌘V.</source>
        <translation>Den bereinigten Text von selbst einfügen. Sonst wird die Zwischenablage bereinigt, und Sie drücken Strg+V.</translation>
    </message>
    <message>
        <source>Behavior</source>
        <translation>Verhalten</translation>
    </message>
    <message>
        <source>Paste automatically after stripping formatting</source>
        <translation>Nach dem Bereinigen von selbst einfügen</translation>
    </message>
    <message>
        <source>Auto-paste needs Accessibility permission. When off, your clipboard is cleaned and you press ⌘V yourself.</source>
        <translation>Ausgeschaltet wird die Zwischenablage nur bereinigt, und Sie drücken selbst Strg+V, im Terminal Strg+Umschalt+V.</translation>
    </message>
    <message>
        <source>Assign a shortcut above (a common choice is ⇧⌘V) to paste clean text anywhere.</source>
        <translation>Legen Sie oben ein Tastenkürzel fest, etwa Super+Umschalt+V, um überall reinen Text einzufügen.</translation>
    </message>
</context>
<context>
    <name>ShellText</name>
    <message>
        <source>Small tools for the way you already work.</source>
        <translation>Kleine Werkzeuge für Ihre Art zu arbeiten.</translation>
    </message>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Auto-start at launch</source>
        <translation>Mit Orvane starten</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Launch Orvane at login</source>
        <translation>Orvane beim Anmelden starten</translation>
    </message>
    <message>
        <source>Menu Bar &amp; Dock</source>
        <translation>Systemleiste und Fensterleiste</translation>
    </message>
    <message>
        <source>Orvane is menu-bar-first. With the Dock icon hidden it runs quietly in the menu bar — use the Open Orvane shortcut below to reach this window anytime.</source>
        <translation>Orvane läuft still in der Systemleiste. Dieses Fenster erreichen Sie jederzeit über das Symbol dort oder mit dem Kürzel „Orvane öffnen“ weiter unten.</translation>
    </message>
    <message>
        <source>Show menu bar icon</source>
        <translation>Symbol in der Systemleiste zeigen</translation>
    </message>
    <message>
        <source>Show Dock icon</source>
        <translation>In der Fensterleiste zeigen</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>Orvane only needs a permission for the features you turn on, and asks for it then. You can grant or revoke any of them here or in System Settings.</source>
        <translation>Orvane braucht eine Berechtigung nur für die Funktionen, die Sie einschalten. Hier sehen Sie, was Ihre Arbeitsumgebung erlaubt und was fehlt.</translation>
    </message>
    <message>
        <source>Open Orvane</source>
        <translation>Orvane öffnen</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>Website</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Datenschutz</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Built by</source>
        <translation>Entwickelt von</translation>
    </message>
    <message>
        <source>Required by %1</source>
        <translation>Nötig für %1</translation>
    </message>
    <message>
        <source>Optional for %1</source>
        <translation>Wahlweise für %1</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>App-wide settings, permissions, and about.</source>
        <translation>Einstellungen für das ganze Programm, Berechtigungen und Angaben.</translation>
    </message>
    <message>
        <source>Features</source>
        <translation>Funktionen</translation>
    </message>
    <message>
        <source>About Orvane</source>
        <translation>Über Orvane</translation>
    </message>
    <message>
        <source>Hide Orvane</source>
        <translation>Orvane ausblenden</translation>
    </message>
    <message>
        <source>Quit Orvane</source>
        <translation>Orvane beenden</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Aktualisierungen suchen …</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>No capabilities are on</source>
        <translation>Keine Funktion ist eingeschaltet</translation>
    </message>
    <message>
        <source>Turn features on…</source>
        <translation>Funktionen einschalten …</translation>
    </message>
    <message>
        <source>Open Orvane…</source>
        <translation>Orvane öffnen …</translation>
    </message>
    <message>
        <source>Choose your features</source>
        <translation>Wählen Sie Ihre Funktionen</translation>
    </message>
    <message>
        <source>Turn on what you want now — you can change any of this later from the Orvane window.</source>
        <translation>Schalten Sie ein, was Sie möchten – später können Sie alles in Orvanes Fenster ändern.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Get Started</source>
        <translation>Los geht’s</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>Welcome to </source>
        <translation>Willkommen bei </translation>
    </message>
    <message>
        <source>Bring the Windows habits you miss to your Mac — window switching,
keyboard and mouse remapping, cut &amp; paste, and more.
Turn on only the features you want.</source>
        <translation>Kleine Helfer für Ihre Arbeitsumgebung – Fenster, die einrasten,
eine Zwischenablage mit Gedächtnis, Tasten nach Wunsch und mehr.
Schalten Sie nur ein, was Sie möchten.</translation>
    </message>
    <message>
        <source>Learn more at %1</source>
        <translation>Mehr erfahren: %1</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Erteilt</translation>
    </message>
    <message>
        <source>Not granted</source>
        <translation>Nicht erteilt</translation>
    </message>
    <message>
        <source>Required</source>
        <translation>Nötig</translation>
    </message>
    <message>
        <source>Optional</source>
        <translation>Wahlweise</translation>
    </message>
    <message>
        <source>Grant</source>
        <translation>Erteilen</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>All permissions granted</source>
        <translation>Alle Berechtigungen erteilt</translation>
    </message>
    <message>
        <source>Manage in General</source>
        <translation>In „Allgemein“ verwalten</translation>
    </message>
    <message>
        <source>Orvane&apos;s features need macOS privacy permissions. You can grant them now, or later when you turn each feature on.</source>
        <translation>Orvanes Funktionen hängen davon ab, was Ihre Arbeitsumgebung erlaubt. Darum können Sie sich jetzt kümmern oder später, wenn Sie eine Funktion einschalten.</translation>
    </message>
    <message>
        <source>Granted it but still shows off? macOS applies new permissions only after Orvane restarts.</source>
        <translation>Etwas geändert, und es gilt noch nicht? Manches gilt erst, wenn Orvane neu startet.</translation>
    </message>
    <message>
        <source>Quit &amp; Reopen</source>
        <translation>Beenden und neu öffnen</translation>
    </message>
    <message>
        <source>Set shortcut</source>
        <translation>Kürzel festlegen</translation>
    </message>
    <message>
        <source>Another program has this shortcut. It works here once that lets it go.</source>
        <translation>Ein anderes Programm hat dieses Kürzel. Hier wirkt es, sobald jenes es freigibt.</translation>
    </message>
    <message>
        <source>This keyboard has no such key.</source>
        <translation>Diese Tastatur hat keine solche Taste.</translation>
    </message>
    <message>
        <source>The system refuses this shortcut.</source>
        <translation>Das System verweigert dieses Kürzel.</translation>
    </message>
    <message>
        <source>“%1” has this shortcut too.</source>
        <translation>„%1“ hat dieses Kürzel auch.</translation>
    </message>
</context>
<context>
    <name>SnapZonesText</name>
    <message>
        <source>Left Half</source>
        <translation>Linke Hälfte</translation>
    </message>
    <message>
        <source>Right Half</source>
        <translation>Rechte Hälfte</translation>
    </message>
    <message>
        <source>Top Half</source>
        <translation>Obere Hälfte</translation>
    </message>
    <message>
        <source>Bottom Half</source>
        <translation>Untere Hälfte</translation>
    </message>
    <message>
        <source>Top Left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source>Top Right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Bottom Left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Bottom Right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Snap Layouts</source>
        <translation>Anordnungen</translation>
    </message>
    <message>
        <source>Snap Zones</source>
        <translation>Einrastzonen</translation>
    </message>
    <message>
        <source>Drag windows to the edges — or use shortcuts — to snap them into halves, quarters, or fullscreen.</source>
        <translation>Fenster an den Rand ziehen oder Kürzel drücken: Sie rasten als Hälfte, Viertel oder über den ganzen Bildschirm ein.</translation>
    </message>
    <message>
        <source>Move and resize the windows of other apps.</source>
        <translation>Fenster anderer Programme bewegen und ihre Größe ändern.</translation>
    </message>
    <message>
        <source>Snap: %1</source>
        <translation>Einrasten: %1</translation>
    </message>
    <message>
        <source>Show Snap Layouts</source>
        <translation>Anordnungen zeigen</translation>
    </message>
    <message>
        <source>Maximize Window</source>
        <translation>Fenster maximieren</translation>
    </message>
    <message>
        <source>Snap Layouts…</source>
        <translation>Anordnungen …</translation>
    </message>
    <message>
        <source>pt</source>
        <comment>points</comment>
        <translation>px</translation>
    </message>
    <message>
        <source>Drag to Snap</source>
        <translation>Ziehen und einrasten</translation>
    </message>
    <message>
        <source>Snap windows when dragged to a screen edge</source>
        <translation>Fenster einrasten, die an den Bildschirmrand gezogen werden</translation>
    </message>
    <message>
        <source>Drag a window to the left/right edge for halves, a corner for quarters, or the top to maximize.</source>
        <translation>Ziehen Sie ein Fenster an den linken oder rechten Rand für Hälften, in eine Ecke für Viertel oder nach oben zum Maximieren.</translation>
    </message>
    <message>
        <source>Spacing</source>
        <translation>Abstände</translation>
    </message>
    <message>
        <source>Gap from screen edges</source>
        <translation>Abstand zum Bildschirmrand</translation>
    </message>
    <message>
        <source>Gap between windows</source>
        <translation>Abstand zwischen Fenstern</translation>
    </message>
    <message>
        <source>Edge Detection</source>
        <translation>Randerkennung</translation>
    </message>
    <message>
        <source>Edge sensitivity</source>
        <translation>Breite des Randes</translation>
    </message>
    <message>
        <source>Corner size</source>
        <translation>Größe der Ecken</translation>
    </message>
    <message>
        <source>Assign keyboard shortcuts for halves, quarters, maximize, and Snap Layouts in the Keyboard Shortcuts section above.</source>
        <translation>Kürzel für Hälften, Viertel, Maximieren und Anordnungen legen Sie oben auf dieser Seite unter „Tastenkürzel“ fest.</translation>
    </message>
</context>
<context>
    <name>TextExtractorText</name>
    <message>
        <source>Text Extractor</source>
        <translation>Texterkennung</translation>
    </message>
    <message>
        <source>Drag a box over any part of the screen to copy the text inside it (OCR).</source>
        <translation>Einen Rahmen über einen Teil des Bildschirms ziehen, um den Text darin zu kopieren (OCR).</translation>
    </message>
    <message>
        <source>Capture the screen region you select so its text can be read.</source>
        <translation>Den gewählten Teil des Bildschirms aufnehmen, um seinen Text zu lesen.</translation>
    </message>
    <message>
        <source>Extract Text from Screen</source>
        <translation>Text vom Bildschirm lesen</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Join lines into one paragraph</source>
        <translation>Zeilen zu einem Absatz verbinden</translation>
    </message>
    <message>
        <source>Off keeps the original line breaks.</source>
        <translation>Ausgeschaltet bleiben die Zeilenumbrüche erhalten.</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>Sprachen</translation>
    </message>
    <message>
        <source>Text is read in</source>
        <translation>Text wird gelesen auf</translation>
    </message>
    <message>
        <source>Looking for languages…</source>
        <translation>Sprachen werden gesucht …</translation>
    </message>
    <message>
        <source>None: no text can be read</source>
        <translation>Keiner: Text kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>To read %1, install the package %2.</source>
        <translation>Um %1 zu lesen, installieren Sie das Paket %2.</translation>
    </message>
    <message>
        <source>Assign a shortcut above, then drag a box over any text on screen — even inside images or videos — to copy it.</source>
        <translation>Legen Sie oben ein Tastenkürzel fest und ziehen Sie dann einen Rahmen über einen Text auf dem Bildschirm – auch in Bildern oder Videos –, um ihn zu kopieren.</translation>
    </message>
    <message>
        <source>Recognizing…</source>
        <translation>Wird gelesen …</translation>
    </message>
    <message>
        <source>No text found</source>
        <translation>Kein Text gefunden</translation>
    </message>
    <message>
        <source>Copied ✓</source>
        <translation>Kopiert ✓</translation>
    </message>
    <message>
        <source>Drag to select text · Esc to cancel</source>
        <translation>Ziehen, um Text zu wählen · Esc bricht ab</translation>
    </message>
</context>
</TS>
