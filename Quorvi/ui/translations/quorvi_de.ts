<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AccountSyncSettings</name>
    <message>
        <source>Account &amp; sync</source>
        <translation>Konto &amp; Abgleich</translation>
    </message>
    <message>
        <source>Sync with my Apple Account</source>
        <translation>Mit meinen anderen Computern abgleichen</translation>
    </message>
    <message>
        <source>Sync now</source>
        <translation>Jetzt abgleichen</translation>
    </message>
    <message>
        <source>Settings, corrections, retained history and usage sync privately between Macs signed into the same iCloud account. Offline changes are saved and sent when you reconnect.</source>
        <translation>Einstellungen, Korrekturen, aufbewahrter Verlauf und Nutzung werden privat zwischen deinen Computern abgeglichen, über einen Ordner oder Server, der dir gehört. Was du ohne Verbindung änderst, wird gesichert und später gesendet.</translation>
    </message>
    <message>
        <source>Microphone and Accessibility permissions must be granted separately on each Mac. Audio recordings are never synced.</source>
        <translation>Mikrofon und Barrierefreiheit werden auf jedem Computer eigens eingerichtet. Aufnahmen werden nie abgeglichen.</translation>
    </message>
    <message>
        <source>Last synced %1 · %2 pending</source>
        <translation>Zuletzt abgeglichen: %1 · %2 ausstehend</translation>
    </message>
    <message>
        <source>Shared folder: %1</source>
        <translation>Gemeinsamer Ordner: %1</translation>
    </message>
    <message>
        <source>Server: %1</source>
        <translation>Server: %1</translation>
    </message>
    <message>
        <source>Quorvi&apos;s own folder can&apos;t be used. Check disk space and folder access.</source>
        <translation>Quorvis eigener Ordner ist nicht zu benutzen. Prüfe freien Platz und Zugriff auf den Ordner.</translation>
    </message>
    <message>
        <source>The shared folder can&apos;t be used. Check that it exists and that you may write to it, or choose another folder.</source>
        <translation>Der gemeinsame Ordner ist nicht zu benutzen. Prüfe, ob es ihn gibt und ob du darin schreiben darfst, oder wähle einen anderen Ordner.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Check where the data are shared</source>
        <translation>Den Ort der geteilten Daten prüfen</translation>
    </message>
    <message>
        <source>Cancel the check</source>
        <translation>Die Prüfung abbrechen</translation>
    </message>
    <message>
        <source>The server does not let you in. Check its address and the user, and enter the password again.</source>
        <translation>Der Server lässt dich nicht hinein. Prüfe seine Adresse und den Benutzer, und gib das Passwort noch einmal ein.</translation>
    </message>
    <message>
        <source>Writing something and reading it back…</source>
        <translation>Etwas wird geschrieben und zurückgelesen …</translation>
    </message>
    <message>
        <source>It works: data can be written and read back.</source>
        <translation>Es geht: Daten lassen sich schreiben und zurücklesen.</translation>
    </message>
</context>
<context>
    <name>ApiKeySettings</name>
    <message>
        <source>OpenAI API key</source>
        <translation>OpenAI-API-Schlüssel</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gesichert</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Get an API key ↗</source>
        <translation>API-Schlüssel besorgen ↗</translation>
    </message>
    <message>
        <source>Remove key</source>
        <translation>Schlüssel entfernen</translation>
    </message>
    <message>
        <source>Sync API key through iCloud Keychain</source>
        <translation>API-Schlüssel im Schlüsselbund zum Abgleich vormerken</translation>
    </message>
    <message>
        <source>Your key stays in macOS Keychain. Recordings go directly to OpenAI for transcription. API usage is billed to your OpenAI account.</source>
        <translation>Dein Schlüssel bleibt in deinem Schlüsselbund. Aufnahmen gehen zur Umwandlung in Text direkt an OpenAI. Die Nutzung der API wird deinem OpenAI-Konto berechnet.</translation>
    </message>
    <message>
        <source>Enter a replacement key</source>
        <translation>Neuen Schlüssel eingeben</translation>
    </message>
    <message>
        <source>Paste your API key</source>
        <translation>API-Schlüssel einsetzen</translation>
    </message>
    <message>
        <source>API key</source>
        <translation>API-Schlüssel</translation>
    </message>
    <message>
        <source>The key for %1. It stays in your keyring and is sent nowhere else.</source>
        <translation>Der Schlüssel für %1. Er bleibt in deinem Schlüsselbund und wird sonst nirgendwohin gesendet.</translation>
    </message>
    <message>
        <source>The environment variable QUORVI_API_KEY gives the key until Quorvi is started without that variable. What you change here counts until Quorvi ends; the key in your keyring stays as it is.</source>
        <translation>Die Umgebungsvariable QUORVI_API_KEY gibt den Schlüssel vor, bis Quorvi ohne sie gestartet wird. Was du hier änderst, gilt, bis Quorvi endet; der Schlüssel in deinem Schlüsselbund bleibt, wie er ist.</translation>
    </message>
</context>
<context>
    <name>AppWindow</name>
    <message>
        <source>Quorvi is running</source>
        <translation>Quorvi läuft</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons. Start Quorvi again to open its window.</source>
        <translation>Diese Arbeitsumgebung zeigt keine Symbole in einer Leiste. Starte Quorvi erneut, um sein Fenster zu öffnen.</translation>
    </message>
</context>
<context>
    <name>CloudComputersList</name>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Computers that share this folder</source>
        <translation>Computer, die diesen Ordner teilen</translation>
    </message>
    <message>
        <source>Name of this computer</source>
        <translation>Name dieses Computers</translation>
    </message>
    <message>
        <source>Rename this computer</source>
        <translation>Diesen Computer umbenennen</translation>
    </message>
    <message>
        <source>%1 (this computer)</source>
        <translation>%1 (dieser Computer)</translation>
    </message>
    <message>
        <source>Last change %1</source>
        <translation>Letzte Änderung %1</translation>
    </message>
    <message>
        <source>Remove…</source>
        <translation>Entfernen …</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Remove %1?</source>
        <translation>%1 entfernen?</translation>
    </message>
    <message>
        <source>Only for a computer that you no longer have or that no longer uses this folder: its files are deleted. Nothing that only it had is lost.</source>
        <translation>Nur für einen Computer, den du nicht mehr hast oder der diesen Ordner nicht mehr benutzt: Seine Dateien werden gelöscht. Was nur er hatte, geht nicht verloren.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>CloudPlaceSettings</name>
    <message>
        <source>Where your computers share the data</source>
        <translation>Wo deine Computer die Daten teilen</translation>
    </message>
    <message>
        <source>Only this computer</source>
        <translation>Nur dieser Computer</translation>
    </message>
    <message>
        <source>A shared folder</source>
        <translation>Ein gemeinsamer Ordner</translation>
    </message>
    <message>
        <source>A PostgreSQL server</source>
        <translation>Ein PostgreSQL-Server</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Durchsuchen …</translation>
    </message>
    <message>
        <source>Browse for the folder</source>
        <translation>Den Ordner suchen</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>The folder&apos;s path on this computer</source>
        <translation>Der Pfad des Ordners auf diesem Computer</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>The account on the server</source>
        <translation>Das Konto auf dem Server</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Empty leaves the stored one as it is</source>
        <translation>Leer lässt das gespeicherte, wie es ist</translation>
    </message>
    <message>
        <source>Browse for the certificate</source>
        <translation>Das Zertifikat suchen</translation>
    </message>
    <message>
        <source>Certificate of the server&apos;s authority (optional)</source>
        <translation>Zertifikat der Zertifizierungsstelle des Servers (optional)</translation>
    </message>
    <message>
        <source>One that this computer trusts already</source>
        <translation>Eine, der dieser Computer schon vertraut</translation>
    </message>
    <message>
        <source>The data stay on this computer. What is in a folder or on a server stays there for the other computers.</source>
        <translation>Die Daten bleiben auf diesem Computer. Was in einem Ordner oder auf einem Server liegt, bleibt dort für die anderen Computer.</translation>
    </message>
    <message>
        <source>Keep the data on this computer only</source>
        <translation>Die Daten nur auf diesem Computer behalten</translation>
    </message>
    <message>
        <source>A folder that Syncthing, Nextcloud, Dropbox, NFS or the like keeps the same on your computers. It must carry over all files and subfolders, in any order, and never change or leave out any. Whoever can read the folder can read your dictations.</source>
        <translation>Ein Ordner, den Syncthing, Nextcloud, Dropbox, NFS oder Ähnliches auf deinen Computern gleich hält. Alle Dateien und Unterordner müssen übertragen werden, in beliebiger Reihenfolge, und keine darf verändert oder ausgelassen werden. Wer den Ordner lesen kann, kann deine Diktate lesen.</translation>
    </message>
    <message>
        <source>Use this folder</source>
        <translation>Diesen Ordner benutzen</translation>
    </message>
    <message>
        <source>A database that was set up with quorvi-cloud-server. The password goes into your keyring. The server must have a certificate that this computer trusts, or that the authority below has signed.</source>
        <translation>Eine Datenbank, die mit quorvi-cloud-server eingerichtet wurde. Das Passwort kommt in deinen Schlüsselbund. Der Server muss ein Zertifikat haben, dem dieser Computer vertraut oder das die Stelle unten unterschrieben hat.</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Diesen Server benutzen</translation>
    </message>
    <message>
        <source>Choose the shared folder</source>
        <translation>Den gemeinsamen Ordner auswählen</translation>
    </message>
    <message>
        <source>Choose the certificate</source>
        <translation>Das Zertifikat auswählen</translation>
    </message>
    <message>
        <source>The keyring did not take the password. Unlock it and try again.</source>
        <translation>Der Schlüsselbund hat das Passwort nicht angenommen. Entsperre ihn und versuche es noch einmal.</translation>
    </message>
</context>
<context>
    <name>Confirmation</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CorrectionEditor</name>
    <message>
        <source>Remember a correction</source>
        <translation>Eine Korrektur merken</translation>
    </message>
    <message>
        <source>Save a word or short phrase once. Quorvi will use your preferred spelling in future dictations.</source>
        <translation>Sichere ein Wort oder eine kurze Wendung einmal. Quorvi schreibt sie in künftigen Diktaten so, wie du es möchtest.</translation>
    </message>
    <message>
        <source>e.g. Russet Miner</source>
        <translation>z. B. Russet Miner</translation>
    </message>
    <message>
        <source>e.g. russetmanor</source>
        <translation>z. B. russetmanor</translation>
    </message>
    <message>
        <source>Quorvi writes</source>
        <translation>Quorvi schreibt</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Ersetzen durch</translation>
    </message>
    <message>
        <source>Use the exact replacement you want, including capitals. This saves a rule for future text; existing text stays as written.</source>
        <translation>Gib den Ersatz genau so ein, wie du ihn möchtest, auch in Groß- und Kleinschreibung. Die Regel gilt für künftigen Text; bestehender bleibt, wie er ist.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Save correction</source>
        <translation>Korrektur sichern</translation>
    </message>
    <message>
        <source>That phrase does not match this transcript. The rule will still apply to future matches.</source>
        <translation>Diese Wendung kommt in diesem Text nicht vor. Die Regel gilt trotzdem für künftige Treffer.</translation>
    </message>
</context>
<context>
    <name>CorrectionRow</name>
    <message>
        <source>Enable correction</source>
        <translation>Korrektur anwenden</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Delete correction</source>
        <translation>Korrektur löschen</translation>
    </message>
    <message>
        <source>Learned from an edit</source>
        <translation>Aus einer Änderung gelernt</translation>
    </message>
    <message>
        <source>Saved by you</source>
        <translation>Von dir gesichert</translation>
    </message>
    <message>
        <source>Enable correction for %1</source>
        <translation>Korrektur anwenden für %1</translation>
    </message>
    <message>
        <source>Edit correction for %1</source>
        <translation>Korrektur bearbeiten für %1</translation>
    </message>
    <message>
        <source>Delete correction for %1</source>
        <translation>Korrektur löschen für %1</translation>
    </message>
</context>
<context>
    <name>CorrectionsSettings</name>
    <message>
        <source>Corrections</source>
        <translation>Korrekturen</translation>
    </message>
    <message>
        <source>Keep brand names and preferred spellings consistent. Corrections apply automatically before Quorvi pastes or saves your text.</source>
        <translation>Halte Markennamen und bevorzugte Schreibweisen einheitlich. Korrekturen werden angewandt, bevor Quorvi deinen Text einsetzt oder sichert.</translation>
    </message>
    <message>
        <source>Learn from my edits in other apps</source>
        <translation>Aus meinen Änderungen in anderen Programmen lernen</translation>
    </message>
    <message>
        <source>Correct the text in the same field, then pause for two seconds. Quorvi saves short spelling corrections automatically and shows Correction saved. It watches for up to one minute after pasting. Mixed Greek and Latin spellings work too.</source>
        <translation>Verbessere den Text im selben Feld und halte zwei Sekunden inne. Quorvi sichert kurze Verbesserungen der Schreibweise von selbst und zeigt „Korrektur gesichert“. Es achtet nach dem Einsetzen bis zu einer Minute darauf. Auch gemischte griechische und lateinische Schreibweisen gehen.</translation>
    </message>
    <message>
        <source>Test automatic learning</source>
        <translation>Lernen ausprobieren</translation>
    </message>
    <message>
        <source>Click a field in another app within 10 seconds. Then change oxygen to oxygon in the sample and pause. No recording or API usage.</source>
        <translation>Klicke innerhalb von 10 Sekunden in ein Feld eines anderen Programms. Mach dann im Beispiel aus oxygen oxygon und halte inne. Ohne Aufnahme und ohne API.</translation>
    </message>
    <message>
        <source>Add correction</source>
        <translation>Korrektur hinzufügen</translation>
    </message>
    <message>
        <source>Saved corrections</source>
        <translation>Gesicherte Korrekturen</translation>
    </message>
    <message>
        <source>Search corrections</source>
        <translation>Korrekturen durchsuchen</translation>
    </message>
    <message>
        <source>No saved corrections. Add the phrase Quorvi writes and the spelling you want.</source>
        <translation>Keine gesicherten Korrekturen. Gib an, was Quorvi schreibt und wie du es haben möchtest.</translation>
    </message>
    <message>
        <source>Show more</source>
        <translation>Mehr zeigen</translation>
    </message>
    <message>
        <source>Matching ignores capitalization and extra spaces, and uses whole words. Your replacement keeps its exact spelling and capitalization. Saved rules sync between your Macs when iCloud sync is enabled.</source>
        <translation>Verglichen werden ganze Wörter, ohne Rücksicht auf Groß- und Kleinschreibung und überzählige Leerzeichen. Dein Ersatz bleibt genau so geschrieben. Gesicherte Regeln werden zwischen deinen Computern abgeglichen, wenn der Abgleich eingeschaltet ist.</translation>
    </message>
    <message>
        <source>Automatic learning is off.</source>
        <translation>Das Lernen ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Suche leeren</translation>
    </message>
</context>
<context>
    <name>DesktopSettings</name>
    <message>
        <source>This desktop</source>
        <translation>Diese Arbeitsumgebung</translation>
    </message>
    <message>
        <source>Press keys to paste</source>
        <translation>Zum Einfügen Tasten drücken</translation>
    </message>
    <message>
        <source>For fields that take text in no other way; without it, the text is left on the clipboard. The desktop may ask you once: allow remote interaction there, and let it remember that. While Quorvi pastes, the desktop shows that it is shared.</source>
        <translation>Für Felder, die Text nicht anders annehmen; ohne das bleibt der Text in der Zwischenablage. Die Arbeitsumgebung fragt dich vielleicht einmal: Erlaube dort die Interaktion aus der Ferne, und lass sie sich das merken. Während Quorvi einfügt, zeigt die Arbeitsumgebung an, dass sie geteilt wird.</translation>
    </message>
    <message>
        <source>The desktop is asking you.</source>
        <translation>Die Arbeitsumgebung fragt dich gerade.</translation>
    </message>
    <message>
        <source>The desktop does not allow it, or does not remember that you do.</source>
        <translation>Die Arbeitsumgebung erlaubt es nicht, oder sie merkt sich nicht, dass du es erlaubst.</translation>
    </message>
</context>
<context>
    <name>DictationPage</name>
    <message>
        <source>Speak in your language.</source>
        <translation>Sprich in deiner Sprache.</translation>
    </message>
    <message>
        <source>Quorvi stays in your menu bar. Press Esc to cancel a dictation.</source>
        <translation>Quorvi bleibt als Symbol in deiner Leiste. Esc bricht ein Diktat ab.</translation>
    </message>
    <message>
        <source>Quorvi stays in your menu bar. “quorvi cancel” cancels a dictation.</source>
        <translation>Quorvi bleibt als Symbol in deiner Leiste. „quorvi cancel“ bricht ein Diktat ab.</translation>
    </message>
</context>
<context>
    <name>DictationSettings</name>
    <message>
        <source>Dictation</source>
        <translation>Diktat</translation>
    </message>
    <message>
        <source>Press and release Left or Right Control, Right Option, or a function key. You can also use a key with ⌘ / ⌃ / ⌥. Esc cancels.</source>
        <translation>Drücke die linke oder rechte Strg-Taste, die rechte Alt-Taste oder eine Funktionstaste und lass sie los. Auch eine Taste mit Strg, Alt oder Super geht. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Record custom shortcut…</source>
        <translation>Eigenen Kurzbefehl aufnehmen …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Keep the shortcut</source>
        <translation>Kurzbefehl behalten</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Kurzbefehl</translation>
    </message>
    <message>
        <source>Choose a shortcut that no other dictation app, and no other application, uses already. Function keys may require Fn.</source>
        <translation>Wähle einen Kurzbefehl, den kein anderes Diktier- oder sonstiges Programm benutzt. Funktionstasten brauchen vielleicht Fn.</translation>
    </message>
    <message>
        <source>Shortcut mode</source>
        <translation>Art des Kurzbefehls</translation>
    </message>
    <message>
        <source>Reset dictation</source>
        <translation>Diktat zurücksetzen</translation>
    </message>
    <message>
        <source>If your shortcut stops responding, reset dictation to reconnect keyboard access.</source>
        <translation>Wenn dein Kurzbefehl nicht mehr reagiert, setze das Diktat zurück, um die Tastatur neu zu verbinden.</translation>
    </message>
    <message>
        <source>Interaction</source>
        <translation>Bedienung</translation>
    </message>
    <message>
        <source>Start sound</source>
        <translation>Ton am Anfang</translation>
    </message>
    <message>
        <source>Preview start</source>
        <translation>Anfang anhören</translation>
    </message>
    <message>
        <source>Stop sound</source>
        <translation>Ton am Ende</translation>
    </message>
    <message>
        <source>Preview stop</source>
        <translation>Ende anhören</translation>
    </message>
    <message>
        <source>Choose a separate cue for starting and stopping. Silent disables just that cue.</source>
        <translation>Wähle je einen Ton für Anfang und Ende. „Stumm“ schaltet nur diesen einen ab.</translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation>Taste drücken …</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Kurzbefehl: %1</translation>
    </message>
    <message>
        <source>Press the new shortcut. Esc keeps %1.</source>
        <translation>Drücke den neuen Kurzbefehl. Mit Esc bleibt es bei: %1.</translation>
    </message>
    <message>
        <source>Play sounds</source>
        <translation>Töne abspielen</translation>
    </message>
    <message>
        <source>Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. Esc cancels.</source>
        <translation>Nimm eine Funktionstaste oder eine Taste mit Strg, Alt oder Super. Diese Arbeitsumgebung meldet keine einzelnen Umschalttasten. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Add the shortcut to the desktop&apos;s settings</source>
        <translation>Kurzbefehl in die Einstellungen der Arbeitsumgebung eintragen</translation>
    </message>
    <message>
        <source>The desktop runs a small program of Quorvi when you press the shortcut. You find it among the custom shortcuts in the desktop&apos;s settings while Quorvi runs. Switched off, nothing of it stays there.</source>
        <translation>Die Arbeitsumgebung startet ein kleines Programm von Quorvi, wenn du den Kurzbefehl drückst. Du findest ihn unter den eigenen Tastenkürzeln in ihren Einstellungen, solange Quorvi läuft. Ausgeschaltet bleibt dort nichts davon.</translation>
    </message>
    <message>
        <source>Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. “quorvi cancel” cancels.</source>
        <translation>Nimm eine Funktionstaste oder eine Taste mit Strg, Alt oder Super. Diese Arbeitsumgebung meldet keine einzelnen Umschalttasten. „quorvi cancel“ bricht ab.</translation>
    </message>
</context>
<context>
    <name>GeneralSettings</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Launch Quorvi at login</source>
        <translation>Quorvi beim Anmelden starten</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Startprogramme öffnen</translation>
    </message>
</context>
<context>
    <name>HistoryPage</name>
    <message>
        <source>YOUR WORDS, KEPT CLOSE</source>
        <translation>DEINE WORTE, GUT AUFGEHOBEN</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Search and reuse your dictations.</source>
        <translation>Durchsuche deine Diktate und verwende sie wieder.</translation>
    </message>
    <message>
        <source>Load more</source>
        <translation>Mehr laden</translation>
    </message>
    <message>
        <source>Saving new transcripts is off. Existing history is still available.</source>
        <translation>Neue Texte werden nicht gesichert. Der bisherige Verlauf bleibt verfügbar.</translation>
    </message>
    <message>
        <source>Search transcripts or apps</source>
        <translation>Texte oder Programme suchen</translation>
    </message>
    <message>
        <source>Search dictation history</source>
        <translation>Verlauf der Diktate durchsuchen</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>No matching dictations</source>
        <translation>Keine passenden Diktate</translation>
    </message>
    <message>
        <source>Your next dictation starts your history</source>
        <translation>Mit deinem nächsten Diktat beginnt dein Verlauf</translation>
    </message>
    <message>
        <source>Transcript saving is paused</source>
        <translation>Das Sichern der Texte ruht</translation>
    </message>
    <message>
        <source>Try a word, phrase, or app name.</source>
        <translation>Versuche ein Wort, eine Wendung oder den Namen eines Programms.</translation>
    </message>
    <message>
        <source>Manage transcript saving and retention in Settings.</source>
        <translation>Was gesichert und wie lange es aufbewahrt wird, bestimmst du in den Einstellungen.</translation>
    </message>
    <message>
        <source>Delete this dictation?</source>
        <translation>Dieses Diktat löschen?</translation>
    </message>
    <message>
        <source>It will be removed from history and usage statistics, including your other Macs when iCloud sync is enabled.</source>
        <translation>Es verschwindet aus Verlauf und Statistik, bei eingeschaltetem Abgleich auch auf deinen anderen Computern.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>HistoryRow</name>
    <message>
        <source>Show full text</source>
        <translation>Ganzen Text zeigen</translation>
    </message>
    <message>
        <source>Copy dictation</source>
        <translation>Diktat kopieren</translation>
    </message>
    <message>
        <source>Delete dictation</source>
        <translation>Diktat löschen</translation>
    </message>
    <message>
        <source>Show less</source>
        <translation>Weniger zeigen</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
</context>
<context>
    <name>HistorySettings</name>
    <message>
        <source>History &amp; statistics</source>
        <translation>Verlauf &amp; Statistik</translation>
    </message>
    <message>
        <source>Save transcript history</source>
        <translation>Texte im Verlauf sichern</translation>
    </message>
    <message>
        <source>Keep transcript text</source>
        <translation>Texte aufbewahren</translation>
    </message>
    <message>
        <source>Delete all history and statistics…</source>
        <translation>Ganzen Verlauf und Statistik löschen …</translation>
    </message>
    <message>
        <source>Turning this off stops saving new text. Existing history remains, and usage statistics continue without transcript text.</source>
        <translation>Ausgeschaltet wird neuer Text nicht mehr gesichert. Der bisherige Verlauf bleibt, und die Statistik läuft ohne Texte weiter.</translation>
    </message>
    <message>
        <source>Older text is removed automatically. Word counts, speaking time, cost estimates, dates and app names remain for Insights. Recordings are not kept.</source>
        <translation>Älterer Text wird von selbst entfernt. Wortzahlen, Sprechzeit, geschätzte Kosten, Daten und Programmnamen bleiben für die Einblicke. Aufnahmen werden nicht aufbewahrt.</translation>
    </message>
    <message>
        <source>Delete all history and statistics?</source>
        <translation>Ganzen Verlauf und Statistik löschen?</translation>
    </message>
    <message>
        <source>This permanently removes every saved Quorvi dictation and resets your usage totals, including your other Macs when iCloud sync is enabled.</source>
        <translation>Das entfernt jedes gesicherte Diktat endgültig und setzt die Statistik zurück, bei eingeschaltetem Abgleich auch auf deinen anderen Computern.</translation>
    </message>
    <message>
        <source>Delete all</source>
        <translation>Alles löschen</translation>
    </message>
</context>
<context>
    <name>HistoryTexts</name>
    <message>
        <source>%1 dictation</source>
        <translation>%1 Diktat</translation>
    </message>
    <message numerus="yes">
        <source>%1 dictations</source>
        <translation>
            <numerusform>%1 Diktat</numerusform>
            <numerusform>%1 Diktate</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 words</source>
        <translation>
            <numerusform>%1 Wort</numerusform>
            <numerusform>%1 Wörter</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · older dictations</source>
        <translation>%1 · ältere Diktate</translation>
    </message>
    <message>
        <source>%1 min · %2/min</source>
        <translation>%1 Min. · %2/Min.</translation>
    </message>
    <message>
        <source>USD rate checked %1. GPT-4o model rates are approximate per-minute equivalents.</source>
        <translation>Preise in USD, geprüft am %1. Die Preise der GPT-4o-Modelle sind ungefähr auf Minuten umgerechnet.</translation>
    </message>
    <message>
        <source>For %1 older dictation, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</source>
        <translation>Bei %1 älteren Diktat wurde das Modell nicht gesichert. Es gilt der Preis von GPT Transcribe.</translation>
    </message>
    <message numerus="yes">
        <source>For %1 older dictations, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</source>
        <translation>
            <numerusform>Bei %1 älteren Diktat wurde das Modell nicht gesichert. Es gilt der Preis von GPT Transcribe.</numerusform>
            <numerusform>Bei %1 älteren Diktaten wurde das Modell nicht gesichert. Es gilt der Preis von GPT Transcribe.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 sec</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message>
        <source>Top %1 of %2 apps</source>
        <translation>Die ersten %1 von %2 Programmen</translation>
    </message>
    <message numerus="yes">
        <source>%1-day streak</source>
        <translation>
            <numerusform>%1 Tag in Folge</numerusform>
            <numerusform>%1 Tage in Folge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Best: %1 days · all time</source>
        <translation>
            <numerusform>Bestwert: %1 Tag · insgesamt</numerusform>
            <numerusform>Bestwert: %1 Tage · insgesamt</numerusform>
        </translation>
    </message>
    <message>
        <source>TODAY</source>
        <translation>HEUTE</translation>
    </message>
    <message>
        <source>YESTERDAY</source>
        <translation>GESTERN</translation>
    </message>
    <message numerus="yes">
        <source>%1 saved dictations</source>
        <translation>
            <numerusform>%1 gesichertes Diktat</numerusform>
            <numerusform>%1 gesicherte Diktate</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 words · %2 sec</source>
        <translation>
            <numerusform>%1 Wort · %2 s</numerusform>
            <numerusform>%1 Wörter · %2 s</numerusform>
        </translation>
    </message>
    <message>
        <source>Offline recogniser</source>
        <translation>Erkenner ohne Netz</translation>
    </message>
    <message>
        <source>%1 min · not estimated</source>
        <translation>%1 Min. · nicht geschätzt</translation>
    </message>
</context>
<context>
    <name>InsightsPage</name>
    <message>
        <source>YOUR DICTATION, IN NUMBERS</source>
        <translation>DEINE DIKTATE IN ZAHLEN</translation>
    </message>
    <message>
        <source>Insights</source>
        <translation>Einblicke</translation>
    </message>
    <message>
        <source>Usage across your synced Macs, measured from your Quorvi dictations.</source>
        <translation>Nutzung auf deinen abgeglichenen Computern, gemessen an deinen Diktaten mit Quorvi.</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source>Estimated API cost</source>
        <translation>Geschätzte API-Kosten</translation>
    </message>
    <message>
        <source>Speed is total words divided by recording time. Counts include completed transcriptions, even when you copy them manually. Statistics start with this version of Quorvi.</source>
        <translation>Das Tempo ist die Zahl der Wörter geteilt durch die Aufnahmezeit. Gezählt werden fertige Umwandlungen, auch von Hand kopierte. Die Statistik beginnt mit dieser Version von Quorvi.</translation>
    </message>
    <message>
        <source>Words dictated</source>
        <translation>Diktierte Wörter</translation>
    </message>
    <message>
        <source>Words per minute</source>
        <translation>Wörter pro Minute</translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation>Diktate</translation>
    </message>
    <message>
        <source>Speaking time</source>
        <translation>Sprechzeit</translation>
    </message>
    <message>
        <source>Apps used</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Daily words</source>
        <translation>Wörter am Tag</translation>
    </message>
    <message>
        <source>Daily words dictated in the last fourteen days</source>
        <translation>Diktierte Wörter an den letzten vierzehn Tagen</translation>
    </message>
    <message>
        <source>Last 14 days</source>
        <translation>Letzte 14 Tage</translation>
    </message>
    <message>
        <source>Usage by app</source>
        <translation>Nutzung nach Programm</translation>
    </message>
    <message>
        <source>Your writing apps will appear here after you dictate.</source>
        <translation>Hier erscheinen die Programme, in die du diktierst.</translation>
    </message>
    <message>
        <source>Activity over the last 12 weeks</source>
        <translation>Aktivität der letzten 12 Wochen</translation>
    </message>
    <message>
        <source>A day counts toward your streak when you complete at least one dictation.</source>
        <translation>Ein Tag zählt, wenn du mindestens ein Diktat abschließt.</translation>
    </message>
    <message>
        <source>%1: %2, %3</source>
        <translation>%1: %2, %3</translation>
    </message>
</context>
<context>
    <name>MicrophoneSettings</name>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Record from</source>
        <translation>Aufnehmen von</translation>
    </message>
    <message>
        <source>In use: %1</source>
        <translation>In Gebrauch: %1</translation>
    </message>
    <message>
        <source>No microphone is connected.</source>
        <translation>Es ist kein Mikrofon angeschlossen.</translation>
    </message>
    <message>
        <source>%1 is not connected. Until it is, Quorvi uses the system’s default.</source>
        <translation>%1 ist nicht angeschlossen. Solange nimmt Quorvi den Standard des Systems.</translation>
    </message>
    <message>
        <source>Speak, and the bars move. Quorvi listens for them only while they are shown, and keeps nothing.</source>
        <translation>Sprich, und die Balken bewegen sich. Quorvi hört dafür nur zu, während sie zu sehen sind, und behält nichts.</translation>
    </message>
    <message>
        <source>System default</source>
        <translation>Standard des Systems</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (fehlt)</translation>
    </message>
</context>
<context>
    <name>Model</name>
    <message>
        <source>Listening…</source>
        <translation>Hört zu …</translation>
    </message>
    <message>
        <source>Transcribing…</source>
        <translation>Schreibt um …</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Setzt ein …</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Ready to paste</source>
        <translation>Bereit zum Einsetzen</translation>
    </message>
    <message>
        <source>Needs attention</source>
        <translation>Braucht dich</translation>
    </message>
    <message>
        <source>Correction saved</source>
        <translation>Korrektur gesichert</translation>
    </message>
    <message>
        <source>Classic</source>
        <translation>Klassisch</translation>
    </message>
    <message>
        <source>Soft</source>
        <translation>Sanft</translation>
    </message>
    <message>
        <source>Chime</source>
        <translation>Glocke</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Hold to talk</source>
        <translation>Zum Sprechen halten</translation>
    </message>
    <message>
        <source>Press to toggle</source>
        <translation>Drücken zum Umschalten</translation>
    </message>
    <message>
        <source>Glass</source>
        <translation>Glas</translation>
    </message>
    <message>
        <source>Midnight</source>
        <translation>Mitternacht</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>Papier</translation>
    </message>
    <message>
        <source>Frosted glass, blue accents, and a clean native feel.</source>
        <translation>Mattes Glas, blaue Akzente, klar und vertraut.</translation>
    </message>
    <message>
        <source>A dark capsule with bright mint accents.</source>
        <translation>Eine dunkle Kapsel mit hellen Akzenten in Minze.</translation>
    </message>
    <message>
        <source>Warm ivory, ink lettering, and terracotta accents.</source>
        <translation>Warmes Elfenbein, Tinte und Akzente in Terrakotta.</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 Tage</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 Tage</translation>
    </message>
    <message>
        <source>90 days</source>
        <translation>90 Tage</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 Jahr</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Dieser Monat</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Insgesamt</translation>
    </message>
    <message>
        <source>Until I delete it</source>
        <translation>Bis ich es lösche</translation>
    </message>
    <message>
        <source>Quorvi will stay closed when you sign in.</source>
        <translation>Quorvi bleibt geschlossen, wenn du dich anmeldest.</translation>
    </message>
    <message>
        <source>Quorvi will start quietly in the menu bar when you sign in.</source>
        <translation>Quorvi startet still im Hintergrund, wenn du dich anmeldest.</translation>
    </message>
    <message>
        <source>Allow Quorvi in System Settings → General → Login Items.</source>
        <translation>Quorvi ist in den Startprogrammen deiner Arbeitsumgebung ausgeschaltet. Schalte es dort ein.</translation>
    </message>
    <message>
        <source>Launch at login is available after Quorvi is installed in Applications.</source>
        <translation>Der Start beim Anmelden geht, sobald Quorvi installiert ist.</translation>
    </message>
    <message>
        <source>Launch-at-login status is unavailable.</source>
        <translation>Ob Quorvi beim Anmelden startet, ist nicht bekannt.</translation>
    </message>
    <message>
        <source>Sync paused on this Mac</source>
        <translation>Abgleich auf diesem Computer angehalten</translation>
    </message>
    <message>
        <source>Ready to learn from your next dictation.</source>
        <translation>Bereit, aus deinem nächsten Diktat zu lernen.</translation>
    </message>
    <message>
        <source>Saved in macOS Keychain.</source>
        <translation>In deinem Schlüsselbund gesichert.</translation>
    </message>
    <message>
        <source>API key removed.</source>
        <translation>API-Schlüssel entfernt.</translation>
    </message>
    <message>
        <source>API key sync enabled. Turn on iCloud Passwords &amp; Keychain on your other Macs.</source>
        <translation>API-Schlüssel zum Abgleich vorgemerkt. Er erreicht deine anderen Computer, wenn du deinen Schlüsselbund abgleichst.</translation>
    </message>
    <message>
        <source>API key kept on this Mac; iCloud copy removed.</source>
        <translation>Der API-Schlüssel bleibt auf diesem Computer; die Kopie zum Abgleich ist entfernt.</translation>
    </message>
    <message>
        <source>Enter a valid API key without spaces.</source>
        <translation>Gib einen gültigen API-Schlüssel ohne Leerzeichen ein.</translation>
    </message>
    <message>
        <source>This API key is kept in memory only. Save a key in Settings to sync it.</source>
        <translation>Dieser API-Schlüssel steht nur im Arbeitsspeicher. Sichere einen in den Einstellungen, um ihn abzugleichen.</translation>
    </message>
    <message>
        <source>That phrase already has a correction. Edit its existing rule instead.</source>
        <translation>Für diese Wendung gibt es schon eine Korrektur. Bearbeite die bestehende Regel.</translation>
    </message>
    <message>
        <source>Keep each phrase within 160 characters.</source>
        <translation>Bleib bei jeder Wendung unter 160 Zeichen.</translation>
    </message>
    <message>
        <source>Saved corrections could not be opened. They have been left untouched.</source>
        <translation>Die gesicherten Korrekturen ließen sich nicht öffnen. Sie bleiben unangetastet.</translation>
    </message>
    <message>
        <source>Existing history could not be opened. It has been left untouched; new entries are available for this session only.</source>
        <translation>Der bisherige Verlauf ließ sich nicht öffnen. Er bleibt unangetastet; neue Einträge gibt es nur bis zum Beenden.</translation>
    </message>
    <message>
        <source>History could not be saved on this Mac. Check available disk space and folder access.</source>
        <translation>Der Verlauf ließ sich auf diesem Computer nicht sichern. Prüfe freien Platz und Zugriff auf den Ordner.</translation>
    </message>
    <message>
        <source>Cancelled. Ready for your next dictation.</source>
        <translation>Abgebrochen. Bereit für dein nächstes Diktat.</translation>
    </message>
    <message>
        <source>Converting speech to text…</source>
        <translation>Sprache wird zu Text …</translation>
    </message>
    <message>
        <source>No audible speech detected. Hold the key a little longer and try again.</source>
        <translation>Es war nichts zu hören. Halte die Taste etwas länger und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>Text copied — press ⌘V in any text field.</source>
        <translation>Text kopiert — drücke Strg+V (Terminal: Strg+Umschalt+V).</translation>
    </message>
    <message>
        <source>Enable Accessibility in Settings to test text insertion.</source>
        <translation>Schalte in den Einstellungen die Barrierefreiheit ein, um das Einsetzen zu prüfen.</translation>
    </message>
    <message>
        <source>Use Left or Right Control, Right Option, a function key, or a shortcut with ⌘, ⌃ or ⌥.</source>
        <translation>Nimm die linke oder rechte Strg-Taste, die rechte Alt-Taste, eine Funktionstaste oder eine Taste mit Strg, Alt oder Super.</translation>
    </message>
    <message>
        <source>Click a text field in another app. A sample will be pasted in 10 seconds. Esc cancels.</source>
        <translation>Klicke in ein Textfeld eines anderen Programms. In 10 Sekunden wird ein Beispiel eingesetzt. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Your API key was rejected. Replace it in Settings.</source>
        <translation>Dein API-Schlüssel wurde abgelehnt. Ersetze ihn in den Einstellungen.</translation>
    </message>
    <message>
        <source>The recording is too large. Try a shorter dictation.</source>
        <translation>Die Aufnahme ist zu groß. Versuche ein kürzeres Diktat.</translation>
    </message>
    <message>
        <source>The transcription service is temporarily unavailable. Please try again.</source>
        <translation>Der Dienst ist gerade nicht erreichbar. Bitte versuche es noch einmal.</translation>
    </message>
    <message>
        <source>No speech was recognized. Try again closer to the microphone.</source>
        <translation>Es wurde nichts erkannt. Versuche es näher am Mikrofon.</translation>
    </message>
    <message>
        <source>Add your OpenAI API key in Settings.</source>
        <translation>Füge deinen OpenAI-API-Schlüssel in den Einstellungen hinzu.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly during your last dictation. Nothing of it was kept; please dictate it again.</source>
        <translation>Quorvi wurde während deines letzten Diktats unerwartet beendet. Nichts davon wurde behalten; bitte diktiere es noch einmal.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while your last dictation was transcribed. Its text is not in the history; please dictate it again.</source>
        <translation>Quorvi wurde unerwartet beendet, während dein letztes Diktat in Text umgewandelt wurde. Der Text steht nicht im Verlauf; bitte diktiere es noch einmal.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while it inserted your last dictation. Its text is in the history.</source>
        <translation>Quorvi wurde unerwartet beendet, während dein letztes Diktat eingefügt wurde. Der Text steht im Verlauf.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while it inserted your last dictation. Its text is not in the history; look for it where you were writing.</source>
        <translation>Quorvi wurde unerwartet beendet, während dein letztes Diktat eingefügt wurde. Der Text steht nicht im Verlauf; sieh dort nach, wo du geschrieben hast.</translation>
    </message>
    <message>
        <source>A required permission changed. Check Settings before dictating again.</source>
        <translation>Eine nötige Erlaubnis hat sich geändert. Prüfe die Einstellungen, bevor du weiter diktierst.</translation>
    </message>
    <message>
        <source>Keyboard access was interrupted. Try your shortcut again.</source>
        <translation>Der Zugriff auf die Tastatur war unterbrochen. Versuche deinen Kurzbefehl noch einmal.</translation>
    </message>
    <message>
        <source>Click a text field in your writing app first. Quorvi can stay in the menu bar.</source>
        <translation>Klicke zuerst in ein Textfeld deines Schreibprogramms. Quorvi kann im Hintergrund bleiben.</translation>
    </message>
    <message>
        <source>Select a regular text field to dictate.</source>
        <translation>Wähle ein gewöhnliches Textfeld zum Diktieren.</translation>
    </message>
    <message>
        <source>Click the text field you want to dictate into, then use your shortcut.</source>
        <translation>Klicke in das Textfeld, in das du diktieren möchtest, und benutze deinen Kurzbefehl.</translation>
    </message>
    <message>
        <source>Dictation reset. Click a text field and hold your shortcut again.</source>
        <translation>Diktat zurückgesetzt. Klicke in ein Textfeld und halte deinen Kurzbefehl erneut.</translation>
    </message>
    <message>
        <source>Dictation reset. Check permissions and API key setup in Settings.</source>
        <translation>Diktat zurückgesetzt. Prüfe Erlaubnisse und API-Schlüssel in den Einstellungen.</translation>
    </message>
    <message>
        <source>Ready when you are</source>
        <translation>Bereit, wenn du es bist</translation>
    </message>
    <message>
        <source>your app</source>
        <translation>dein Programm</translation>
    </message>
    <message>
        <source>Click a text field in any app, then use your shortcut.</source>
        <translation>Klicke in ein Textfeld eines beliebigen Programms und benutze deinen Kurzbefehl.</translation>
    </message>
    <message>
        <source>Open Quorvi from the menu bar, then Settings to finish API key and permission setup.</source>
        <translation>Öffne Quorvi über sein Symbol in der Leiste und schließe in den Einstellungen die Einrichtung von API-Schlüssel und Erlaubnissen ab.</translation>
    </message>
    <message>
        <source>Dictating into {app}</source>
        <translation>Diktat in: {app}</translation>
    </message>
    <message>
        <source>Inserting into {app}…</source>
        <translation>Wird eingesetzt in: {app} …</translation>
    </message>
    <message>
        <source>Paste sent to {app}.</source>
        <translation>Eingesetzt in: {app}.</translation>
    </message>
    <message>
        <source>Testing Paste in {app}…</source>
        <translation>Einsetzen wird geprüft in: {app} …</translation>
    </message>
    <message>
        <source>Sample sent to {app}.</source>
        <translation>Beispiel eingesetzt in: {app}.</translation>
    </message>
    <message>
        <source>Click a text field in another app. Sample in {seconds} seconds. Esc cancels.</source>
        <translation>Klicke in ein Textfeld eines anderen Programms. Beispiel in {seconds} Sekunden. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Choose a text field and start dictating again.</source>
        <translation>Wähle ein Textfeld und beginne das Diktat noch einmal.</translation>
    </message>
    <message>
        <source>The clipboard is unavailable. Use Copy text to try again, or select the transcript in Quorvi.</source>
        <translation>Die Zwischenablage ist nicht verfügbar. Kopiere den Text noch einmal oder markiere ihn in Quorvi.</translation>
    </message>
    <message>
        <source>Could not copy. You can select the transcript in Quorvi.</source>
        <translation>Kopieren ging nicht. Du kannst den Text in Quorvi markieren.</translation>
    </message>
    <message>
        <source>Enter both the recognized phrase and its replacement.</source>
        <translation>Gib sowohl die erkannte Wendung als auch ihren Ersatz ein.</translation>
    </message>
    <message>
        <source>Enable Accessibility in Quorvi Settings to insert text.</source>
        <translation>Schalte in den Einstellungen von Quorvi die Barrierefreiheit ein, um Text einzusetzen.</translation>
    </message>
    <message>
        <source>Accessibility access changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Der Zugriff auf den Barrierefreiheits-Bus hat sich geändert. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>The destination changed while dictating. Your transcript is ready to copy in Quorvi.</source>
        <translation>Das Ziel hat sich während des Diktats geändert. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>The active window changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Das aktive Fenster ist ein anderes. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>Select a regular text field. Your transcript is ready to copy in Quorvi.</source>
        <translation>Wähle ein gewöhnliches Textfeld. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>The focused field changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Das Eingabefeld ist ein anderes. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>The text cursor moved. Your transcript is ready to copy in Quorvi.</source>
        <translation>Die Einfügemarke hat sich bewegt. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>Could not send Paste. Your transcript is ready to copy in Quorvi.</source>
        <translation>Das Einsetzen ließ sich nicht senden. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>A modifier key is still held. Release it and copy the transcript from Quorvi.</source>
        <translation>Eine Sondertaste ist noch gedrückt. Lass sie los und kopiere den Text aus Quorvi.</translation>
    </message>
    <message>
        <source>Release your modifier keys before inserting. Your transcript is ready to copy in Quorvi.</source>
        <translation>Lass vor dem Einsetzen die Sondertasten los. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>The clipboard is unavailable. Your transcript is ready to copy in Quorvi.</source>
        <translation>Die Zwischenablage ist nicht verfügbar. Dein Text liegt in Quorvi zum Kopieren bereit.</translation>
    </message>
    <message>
        <source>No recording is available.</source>
        <translation>Es gibt keine Aufnahme.</translation>
    </message>
    <message>
        <source>Recording stopped unexpectedly. Check your microphone and try again.</source>
        <translation>Die Aufnahme endete unerwartet. Prüfe dein Mikrofon und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>Recording stopped unexpectedly. Please try again.</source>
        <translation>Die Aufnahme endete unerwartet. Bitte versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The microphone could not start. Check your macOS sound input.</source>
        <translation>Das Mikrofon ließ sich nicht einschalten. Prüfe das Eingabegerät in deinen Klangeinstellungen.</translation>
    </message>
    <message>
        <source>The folder for recordings could not be created: {reason}.</source>
        <translation>Der Ordner für Aufnahmen ließ sich nicht anlegen: {reason}.</translation>
    </message>
    <message>
        <source>The folder for recordings could not be made private: {reason}.</source>
        <translation>Der Ordner für Aufnahmen ließ sich nicht schützen: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be kept apart: {reason}.</source>
        <translation>Die Aufnahme ließ sich nicht absondern: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be read: {reason}.</source>
        <translation>Die Aufnahme ließ sich nicht lesen: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be created: {reason}.</source>
        <translation>Die Aufnahme ließ sich nicht anlegen: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be written: {reason}.</source>
        <translation>Die Aufnahme ließ sich nicht schreiben: {reason}.</translation>
    </message>
    <message>
        <source>The sound could not be encoded: {reason}.</source>
        <translation>Der Ton ließ sich nicht kodieren: {reason}.</translation>
    </message>
    <message>
        <source>This system has no AAC encoder.</source>
        <translation>Dieses System hat keinen AAC-Kodierer.</translation>
    </message>
    <message>
        <source>This API project cannot use the selected model. Try GPT-4o Transcribe in Settings.</source>
        <translation>Dieses API-Projekt darf das gewählte Modell nicht benutzen. Versuche GPT-4o Transcribe in den Einstellungen.</translation>
    </message>
    <message>
        <source>The API is rate limited or has no remaining credit. Check your OpenAI API billing and try again.</source>
        <translation>Die API ist ausgelastet oder dein Guthaben aufgebraucht. Prüfe die Abrechnung deiner OpenAI-API und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>Transcription failed (HTTP {status}). Check your model and try again.</source>
        <translation>Die Umwandlung ist gescheitert (HTTP {status}). Prüfe dein Modell und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The transcription service returned no response.</source>
        <translation>Der Dienst hat nicht geantwortet.</translation>
    </message>
    <message>
        <source>The transcription service returned an unreadable result.</source>
        <translation>Die Antwort des Dienstes war nicht zu verstehen.</translation>
    </message>
    <message>
        <source>This recording is empty or too large. Please record a shorter dictation.</source>
        <translation>Diese Aufnahme ist leer oder zu groß. Bitte nimm ein kürzeres Diktat auf.</translation>
    </message>
    <message>
        <source>The answer of the speech service was too large.</source>
        <translation>Die Antwort des Sprachdienstes war zu groß.</translation>
    </message>
    <message>
        <source>The request to the speech service failed ({reason}). Please try again.</source>
        <translation>Die Anfrage an den Sprachdienst ist gescheitert ({reason}). Bitte versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The request to the speech service could not be made. Check your API key and the service address in Settings.</source>
        <translation>Die Anfrage an den Sprachdienst ging nicht. Prüfe API-Schlüssel und Adresse des Dienstes in den Einstellungen.</translation>
    </message>
    <message>
        <source>speech service</source>
        <translation>Sprachdienst</translation>
    </message>
    <message>
        <source>update server</source>
        <translation>Update-Server</translation>
    </message>
    <message>
        <source>The {server} could not be found. Check your internet connection and try again.</source>
        <translation>Der {server} wurde nicht gefunden. Prüfe deine Internetverbindung und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The {server} could not be reached. The connection was refused.</source>
        <translation>Der {server} war nicht zu erreichen. Die Verbindung wurde abgelehnt.</translation>
    </message>
    <message>
        <source>The {server} could not be reached. Check your internet connection and try again.</source>
        <translation>Der {server} war nicht zu erreichen. Prüfe deine Internetverbindung und versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The {server} did not answer in time. Please try again.</source>
        <translation>Der {server} hat nicht rechtzeitig geantwortet. Bitte versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The {server} could not be trusted. Its certificate is not valid.</source>
        <translation>Dem {server} ist nicht zu trauen. Sein Zertifikat ist ungültig.</translation>
    </message>
    <message>
        <source>The {server} could not be trusted. The certificates of this computer could not be read.</source>
        <translation>Dem {server} ist nicht zu trauen. Die Zertifikate dieses Computers ließen sich nicht lesen.</translation>
    </message>
    <message>
        <source>A secure connection to the {server} could not be made. Please try again.</source>
        <translation>Eine sichere Verbindung zum {server} kam nicht zustande. Bitte versuche es noch einmal.</translation>
    </message>
    <message>
        <source>The connection to the {server} was lost. Please try again.</source>
        <translation>Die Verbindung zum {server} ist abgebrochen. Bitte versuche es noch einmal.</translation>
    </message>
    <message>
        <source>Learning in {app}. Correct a spelling, then pause for two seconds.</source>
        <translation>Lernt in: {app}. Verbessere eine Schreibweise und halte zwei Sekunden inne.</translation>
    </message>
    <message>
        <source>Checking automatic learning in {app}…</source>
        <translation>Das Lernen wird geprüft in: {app} …</translation>
    </message>
    <message>
        <source>Could not verify readable text in {app}. Use Remember correction for this dictation.</source>
        <translation>Lesbarer Text ließ sich nicht bestätigen in: {app}. Nutze für dieses Diktat „Korrektur merken“.</translation>
    </message>
    <message>
        <source>Could not read the final edit in {app}. Use Remember correction.</source>
        <translation>Die letzte Änderung ließ sich nicht lesen in: {app}. Nutze „Korrektur merken“.</translation>
    </message>
    <message>
        <source>The test pasted, but automatic learning could not attach to this editor.</source>
        <translation>Das Beispiel ist eingesetzt, aber in diesem Editor kann nicht gelernt werden.</translation>
    </message>
    <message>
        <source>Automatic learning needs a verified paste. Use Remember correction for this copied transcript.</source>
        <translation>Das Lernen braucht ein bestätigtes Einsetzen. Nutze für diesen kopierten Text „Korrektur merken“.</translation>
    </message>
    <message>
        <source>The surrounding text changed. Use Remember correction for this edit.</source>
        <translation>Der Text ringsum hat sich geändert. Nutze für diese Änderung „Korrektur merken“.</translation>
    </message>
    <message>
        <source>The field was cleared before a correction was saved.</source>
        <translation>Das Feld wurde geleert, bevor eine Korrektur gesichert war.</translation>
    </message>
    <message>
        <source>No spelling change was detected in the last dictation.</source>
        <translation>Im letzten Diktat wurde keine Schreibweise geändert.</translation>
    </message>
    <message>
        <source>This edit needs a manual rule. Choose Remember correction.</source>
        <translation>Diese Änderung braucht eine eigene Regel. Wähle „Korrektur merken“.</translation>
    </message>
    <message>
        <source>Remembered: {rule}</source>
        <translation>Gemerkt: {rule}</translation>
    </message>
    <message>
        <source>This correction is already saved.</source>
        <translation>Diese Korrektur ist schon gesichert.</translation>
    </message>
    <message>
        <source>An existing rule controls this phrase. Edit or enable it in the list below.</source>
        <translation>Für diese Wendung gilt schon eine Regel. Bearbeite sie in der Liste unten oder schalte sie ein.</translation>
    </message>
    <message>
        <source>Your API key is unavailable. Add it again in Settings.</source>
        <translation>Dein API-Schlüssel ist nicht verfügbar. Füge ihn in den Einstellungen noch einmal hinzu.</translation>
    </message>
    <message>
        <source>Could not save your API key to Keychain ({status}).</source>
        <translation>Der API-Schlüssel ließ sich nicht im Schlüsselbund sichern ({status}).</translation>
    </message>
    <message>
        <source>Could not update iCloud Keychain ({status}).</source>
        <translation>Die Kopie zum Abgleich im Schlüsselbund ließ sich nicht ändern ({status}).</translation>
    </message>
    <message>
        <source>Could not remove the key from Keychain ({status}).</source>
        <translation>Der Schlüssel ließ sich nicht aus dem Schlüsselbund entfernen ({status}).</translation>
    </message>
    <message>
        <source>Could not remove the iCloud Keychain copy ({status}).</source>
        <translation>Die Kopie zum Abgleich ließ sich nicht aus dem Schlüsselbund entfernen ({status}).</translation>
    </message>
    <message>
        <source>Install Quorvi before you have it start when you sign in.</source>
        <translation>Installiere Quorvi, bevor du es beim Anmelden starten lässt.</translation>
    </message>
    <message>
        <source>This desktop has no settings for programs that start when you sign in.</source>
        <translation>Diese Arbeitsumgebung hat keine Einstellungen für Programme, die beim Anmelden starten.</translation>
    </message>
    <message>
        <source>Connecting to iCloud…</source>
        <translation>Verbindung wird aufgebaut …</translation>
    </message>
    <message>
        <source>Checking Apple Account…</source>
        <translation>Zugang wird geprüft …</translation>
    </message>
    <message>
        <source>Syncing with iCloud…</source>
        <translation>Abgleich läuft …</translation>
    </message>
    <message>
        <source>Up to date with iCloud</source>
        <translation>Abgeglichen</translation>
    </message>
    <message>
        <source>{count} changes waiting to sync</source>
        <translation>{count} Änderungen warten auf den Abgleich</translation>
    </message>
    <message>
        <source>Sign in to iCloud in System Settings to sync.</source>
        <translation>Der Abgleich hat keinen Zugang. Wähle einen Ordner, oder prüfe die Adresse des Servers und speichere sein Passwort.</translation>
    </message>
    <message>
        <source>Sync is unavailable. Your changes are saved on this Mac.</source>
        <translation>Der Abgleich ist nicht verfügbar. Deine Änderungen sind auf diesem Computer gesichert.</translation>
    </message>
    <message>
        <source>Offline — changes will sync when you reconnect.</source>
        <translation>Offline — abgeglichen wird, sobald du wieder verbunden bist.</translation>
    </message>
    <message>
        <source>iCloud access is unavailable for this build ({code}).</source>
        <translation>Der Abgleich hat keinen Zugang ({code}). Prüfe die Adresse des Ordners oder Servers und deine Rechte dort.</translation>
    </message>
    <message>
        <source>iCloud storage is full. Your changes are saved on this Mac.</source>
        <translation>Der gemeinsame Ordner oder Server ist voll. Deine Änderungen sind auf diesem Computer gesichert.</translation>
    </message>
    <message>
        <source>iCloud will retry. Your changes are saved on this Mac ({code}).</source>
        <translation>Der Abgleich wird wiederholt. Deine Änderungen sind auf diesem Computer gesichert ({code}).</translation>
    </message>
    <message>
        <source>Sync data could not be read. Your local data is untouched.</source>
        <translation>Die Daten des Abgleichs ließen sich nicht lesen. Deine Daten hier sind unangetastet.</translation>
    </message>
    <message>
        <source>Sync paused: changes could not be saved to this Mac. Check disk space and restart Quorvi.</source>
        <translation>Abgleich angehalten: Änderungen ließen sich auf diesem Computer nicht sichern. Prüfe den freien Platz und starte Quorvi neu.</translation>
    </message>
    <message>
        <source>Sync paused: iCloud data was reset. Local data has been preserved.</source>
        <translation>Abgleich angehalten: Die gemeinsamen Daten wurden zurückgesetzt. Deine Daten hier sind erhalten.</translation>
    </message>
    <message>
        <source>Sync paused: sign back into the original Apple Account. Data from different accounts stays separate.</source>
        <translation>Abgleich angehalten: Dieser Ordner oder Server gehört jetzt zu einem anderen Konto. Geh zum ursprünglichen zurück. Daten verschiedener Konten bleiben getrennt.</translation>
    </message>
    <message>
        <source>Sync paused: the original Apple Account is unavailable.</source>
        <translation>Abgleich angehalten: Der ursprüngliche Ordner oder das ursprüngliche Konto ist nicht verfügbar.</translation>
    </message>
    <message>
        <source>This history file was created by a newer version of Quorvi.</source>
        <translation>Diese Verlaufsdatei stammt von einer neueren Version von Quorvi.</translation>
    </message>
    <message>
        <source>Updates aren&apos;t configured in this build.</source>
        <translation>In dieser Ausgabe sind keine Updates eingerichtet.</translation>
    </message>
    <message>
        <source>The system&apos;s installer has Quorvi {version}. When it is done, quit Quorvi and start it again.</source>
        <translation>Das Installationsprogramm des Systems hat Quorvi {version}. Wenn es fertig ist, beende Quorvi und starte es wieder.</translation>
    </message>
    <message>
        <source>The folder for updates could not be created: {reason}.</source>
        <translation>Der Ordner für Updates ließ sich nicht anlegen: {reason}.</translation>
    </message>
    <message>
        <source>The update could not be read from the disk.</source>
        <translation>Das Update ließ sich nicht von der Platte lesen.</translation>
    </message>
    <message>
        <source>The update could not be saved: {reason}.</source>
        <translation>Das Update ließ sich nicht sichern: {reason}.</translation>
    </message>
    <message>
        <source>The update could not be read. It is not a Debian package.</source>
        <translation>Das Update ließ sich nicht lesen. Es ist kein Debian-Paket.</translation>
    </message>
    <message>
        <source>The update was refused. Its package is not Quorvi&apos;s.</source>
        <translation>Das Update wurde abgelehnt. Sein Paket ist nicht Quorvis.</translation>
    </message>
    <message>
        <source>The update was refused. It calls itself Quorvi {version} but is not newer than the Quorvi that is running.</source>
        <translation>Das Update wurde abgelehnt. Es nennt sich Quorvi {version}, ist aber nicht neuer als das laufende Quorvi.</translation>
    </message>
    <message>
        <source>The update server redirects to a connection that is not secure.</source>
        <translation>Der Update-Server leitet auf eine unsichere Verbindung um.</translation>
    </message>
    <message>
        <source>The update server&apos;s address is not a secure one (https).</source>
        <translation>Die Adresse des Update-Servers ist keine sichere (https).</translation>
    </message>
    <message>
        <source>The update server redirects without end.</source>
        <translation>Der Update-Server leitet endlos um.</translation>
    </message>
    <message>
        <source>The update server answered with an error (HTTP {status}). Please try again later.</source>
        <translation>Der Update-Server meldet einen Fehler (HTTP {status}). Bitte versuche es später noch einmal.</translation>
    </message>
    <message>
        <source>The update server answered with something else than asked for (HTTP {status}). Please try again later.</source>
        <translation>Der Update-Server antwortet mit etwas anderem als verlangt (HTTP {status}). Bitte versuche es später noch einmal.</translation>
    </message>
    <message>
        <source>The download is larger than the update feed says. It was refused.</source>
        <translation>Der Download ist größer, als der Update-Feed sagt. Er wurde abgelehnt.</translation>
    </message>
    <message>
        <source>The download is smaller than the update feed says. It was refused.</source>
        <translation>Der Download ist kleiner, als der Update-Feed sagt. Er wurde abgelehnt.</translation>
    </message>
    <message>
        <source>The answer of the update server was too large.</source>
        <translation>Die Antwort des Update-Servers war zu groß.</translation>
    </message>
    <message>
        <source>The update feed could not be read. It is not a feed of releases.</source>
        <translation>Der Update-Feed ließ sich nicht lesen. Er enthält keine Versionen.</translation>
    </message>
    <message>
        <source>The update feed was refused. It declares a document type, which a feed has no use for.</source>
        <translation>Der Update-Feed wurde abgelehnt. Er erklärt einen Dokumenttyp, den ein Feed nicht braucht.</translation>
    </message>
    <message>
        <source>The update feed was refused. It is nested too deeply.</source>
        <translation>Der Update-Feed wurde abgelehnt. Er ist zu tief verschachtelt.</translation>
    </message>
    <message>
        <source>The update feed was refused. It has too many entries.</source>
        <translation>Der Update-Feed wurde abgelehnt. Er hat zu viele Einträge.</translation>
    </message>
    <message>
        <source>The update feed was refused. It is too large.</source>
        <translation>Der Update-Feed wurde abgelehnt. Er ist zu groß.</translation>
    </message>
    <message>
        <source>This desktop has no program that installs packages. Install it with: sudo apt install {package}</source>
        <translation>Diese Arbeitsumgebung hat kein Programm, das Pakete installiert. Installiere es mit: sudo apt install {package}</translation>
    </message>
    <message>
        <source>The package installer could not be started. Install it with: sudo apt install {package}</source>
        <translation>Das Installationsprogramm ließ sich nicht starten. Installiere es mit: sudo apt install {package}</translation>
    </message>
    <message>
        <source>Quorvi {version} is the newest version.</source>
        <translation>Quorvi {version} ist die neueste Version.</translation>
    </message>
    <message>
        <source>Quorvi {version} is available, but it needs version {system} of your system or a later one.</source>
        <translation>Quorvi {version} ist verfügbar, braucht aber Version {system} deines Systems oder eine spätere.</translation>
    </message>
    <message>
        <source>Quorvi {version} was refused. Its signature is not valid.</source>
        <translation>Quorvi {version} wurde abgelehnt. Die Signatur ist ungültig.</translation>
    </message>
    <message>
        <source>The update server could not be used ({reason}).</source>
        <translation>Der Update-Server ließ sich nicht benutzen ({reason}).</translation>
    </message>
    <message>
        <source>&lt;p&gt;The release notes could not be loaded.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Die Versionshinweise ließen sich nicht laden.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Right ⌥</source>
        <translation>Rechte Alt-Taste</translation>
    </message>
    <message>
        <source>Left ⌃</source>
        <translation>Linke Strg-Taste</translation>
    </message>
    <message>
        <source>Right ⌃</source>
        <translation>Rechte Strg-Taste</translation>
    </message>
    <message>
        <source>Key {code}</source>
        <translation>Taste {code}</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is incomplete.</source>
        <translation>Die übergebene Zwischenablage ist unvollständig.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is unreadable.</source>
        <translation>Die übergebene Zwischenablage ist nicht lesbar.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is damaged.</source>
        <translation>Die übergebene Zwischenablage ist beschädigt.</translation>
    </message>
    <message>
        <source>The folder for recordings, {folder}, is not a folder of your own. Remove it and try again.</source>
        <translation>Der Ordner für Aufnahmen, {folder}, gehört nicht dir. Entferne ihn und versuche es erneut.</translation>
    </message>
    <message>
        <source>The sound can&apos;t be encoded: {reason}.</source>
        <translation>Der Ton kann nicht kodiert werden: {reason}.</translation>
    </message>
    <message>
        <source>The sound is no 16-bit PCM WAV file.</source>
        <translation>Der Ton ist keine WAV-Datei mit 16-Bit-PCM.</translation>
    </message>
    <message>
        <source>There is not enough memory to reach the {server}.</source>
        <translation>Der Speicher reicht nicht aus, um den {server} zu erreichen.</translation>
    </message>
    <message>
        <source>The speech service address is not valid. Enter an address such as https://api.openai.com or leave it empty.</source>
        <translation>Die Adresse des Sprachdienstes ist ungültig. Gib eine Adresse wie https://api.openai.com ein oder lass sie leer.</translation>
    </message>
    <message>
        <source>A speech service on another computer must be reached over an encrypted connection. Enter an address that begins with https://.</source>
        <translation>Ein Sprachdienst auf einem anderen Computer muss über eine verschlüsselte Verbindung erreicht werden. Gib eine Adresse ein, die mit https:// beginnt.</translation>
    </message>
    <message>
        <source>A correction has no valid date and could not be saved.</source>
        <translation>Eine Korrektur hat kein gültiges Datum und konnte nicht gesichert werden.</translation>
    </message>
    <message>
        <source>There is not enough memory to look for updates.</source>
        <translation>Der Speicher reicht nicht aus, um nach Updates zu suchen.</translation>
    </message>
    <message>
        <source>There is not enough memory to read the update feed.</source>
        <translation>Der Speicher reicht nicht aus, um den Update-Feed zu lesen.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: its address is not a secure one (https).</source>
        <translation>Quorvi {version} kann nicht heruntergeladen werden: Die Adresse ist keine sichere (https).</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: it is not signed.</source>
        <translation>Quorvi {version} kann nicht heruntergeladen werden: Es ist nicht signiert.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: the update feed doesn&apos;t say how large it is.</source>
        <translation>Quorvi {version} kann nicht heruntergeladen werden: Der Update-Feed nennt keine Größe.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: it is too large.</source>
        <translation>Quorvi {version} kann nicht heruntergeladen werden: Es ist zu groß.</translation>
    </message>
    <message>
        <source>cloudDatabase: {address} is no address that is known</source>
        <translation>cloudDatabase: {address} ist keine bekannte Adresse</translation>
    </message>
    <message>
        <source>cloudDatabase: {address} has no absolute path</source>
        <translation>cloudDatabase: {address} hat keinen absoluten Pfad</translation>
    </message>
    <message>
        <source>The address of a PostgreSQL database begins with postgresql://</source>
        <translation>Die Adresse einer PostgreSQL-Datenbank beginnt mit postgresql://</translation>
    </message>
    <message>
        <source>The database address can&apos;t be understood.</source>
        <translation>Die Adresse der Datenbank ist nicht verständlich.</translation>
    </message>
    <message>
        <source>The database address must not contain a password. Keep it in the keyring or in ~/.pgpass.</source>
        <translation>Die Adresse der Datenbank darf kein Passwort enthalten. Bewahre es im Schlüsselbund oder in ~/.pgpass auf.</translation>
    </message>
    <message>
        <source>Preferences could not be opened. They have been left untouched; changes last for this session only.</source>
        <translation>Die Einstellungen konnten nicht geöffnet werden. Sie wurden nicht angetastet; Änderungen gelten nur für diese Sitzung.</translation>
    </message>
    <message>
        <source>Preferences could not be saved on this computer. Check available disk space and folder access.</source>
        <translation>Die Einstellungen konnten auf diesem Computer nicht gespeichert werden. Prüfe den freien Speicherplatz und den Zugriff auf den Ordner.</translation>
    </message>
    <message>
        <source>The history could not be read ({reason})</source>
        <translation>Der Verlauf konnte nicht gelesen werden ({reason})</translation>
    </message>
    <message>
        <source>The history could not be written; nothing was changed ({reason})</source>
        <translation>Der Verlauf konnte nicht geschrieben werden; es wurde nichts geändert ({reason})</translation>
    </message>
    <message>
        <source>What the synchronisation has kept could not be read ({reason})</source>
        <translation>Die Daten der Synchronisierung konnten nicht gelesen werden ({reason})</translation>
    </message>
    <message>
        <source>This file is no export of Quorvi: {reason}.</source>
        <translation>Diese Datei ist kein Export von Quorvi: {reason}.</translation>
    </message>
    <message>
        <source>This export was written by a newer version of Quorvi.</source>
        <translation>Dieser Export wurde von einer neueren Version von Quorvi geschrieben.</translation>
    </message>
    <message>
        <source>{app} did not take the text. It is on the clipboard.</source>
        <translation>{app} hat den Text nicht übernommen. Er ist in der Zwischenablage.</translation>
    </message>
    <message>
        <source>The old clipboard could not be kept.</source>
        <translation>Die alte Zwischenablage ließ sich nicht bewahren.</translation>
    </message>
    <message>
        <source>Field not checked · {app}</source>
        <translation>Feld nicht geprüft · {app}</translation>
    </message>
    <message>
        <source>Your keyring is locked. Unlock it, then dictate again.</source>
        <translation>Dein Schlüsselbund ist gesperrt. Entsperre ihn und diktiere dann noch einmal.</translation>
    </message>
    <message>
        <source>Your keyring stayed locked, and with it your API key. Dictate again to unlock it.</source>
        <translation>Dein Schlüsselbund blieb gesperrt und mit ihm dein API-Schlüssel. Diktiere noch einmal, um ihn zu entsperren.</translation>
    </message>
    <message>
        <source>Enter the address of your speech service in Settings.</source>
        <translation>Gib in den Einstellungen die Adresse deines Sprachdienstes ein.</translation>
    </message>
    <message>
        <source>The offline recogniser is not installed. Install the package quorvi-speech-service.</source>
        <translation>Der Erkenner ohne Netz ist nicht installiert. Installiere das Paket quorvi-speech-service.</translation>
    </message>
    <message>
        <source>The offline recogniser did not start. Try again, or choose another speech service in Settings.</source>
        <translation>Der Erkenner ohne Netz ist nicht gestartet. Versuche es noch einmal oder wähle in den Einstellungen einen anderen Sprachdienst.</translation>
    </message>
    <message>
        <source>The speech service answered. It is ready for your dictations.</source>
        <translation>Der Sprachdienst hat geantwortet. Er ist bereit für deine Diktate.</translation>
    </message>
    <message>
        <source>Your microphone is missing · {microphone}</source>
        <translation>Dein Mikrofon fehlt · {microphone}</translation>
    </message>
    <message>
        <source>You can try again for {minutes} minutes.</source>
        <translation>Du kannst es noch {minutes} Minuten lang noch einmal versuchen.</translation>
    </message>
    <message>
        <source>You can try again for one more minute.</source>
        <translation>Du kannst es noch eine Minute lang noch einmal versuchen.</translation>
    </message>
    <message>
        <source>There is no recording to try again.</source>
        <translation>Es gibt keine Aufnahme für einen neuen Versuch.</translation>
    </message>
    <message>
        <source>The recording was discarded.</source>
        <translation>Die Aufnahme wurde verworfen.</translation>
    </message>
    <message>
        <source>Text sent to {app}.</source>
        <translation>Text gesendet an: {app}.</translation>
    </message>
    <message>
        <source>This desktop reports no lone modifiers; choose a combination.</source>
        <translation>Diese Arbeitsumgebung meldet keine einzelnen Umschalttasten; wähle eine Kombination.</translation>
    </message>
    <message>
        <source>This desktop does not report when a key goes up: press the shortcut once to speak, and again to insert the text.</source>
        <translation>Diese Arbeitsumgebung meldet nicht, wenn eine Taste losgelassen wird: Drücke den Kurzbefehl einmal zum Sprechen und noch einmal, um den Text einzufügen.</translation>
    </message>
    <message>
        <source>The desktop uses this shortcut for “{use}”. Choose another one.</source>
        <translation>Die Arbeitsumgebung benutzt diesen Kurzbefehl für „{use}“. Wähle einen anderen.</translation>
    </message>
    <message>
        <source>Let Quorvi add the shortcut to the desktop&apos;s settings.</source>
        <translation>Lass Quorvi den Kurzbefehl in die Einstellungen der Arbeitsumgebung eintragen.</translation>
    </message>
    <message>
        <source>The desktop has not given the shortcut to Quorvi. Choose another one, or allow it in the desktop&apos;s settings.</source>
        <translation>Die Arbeitsumgebung hat Quorvi den Kurzbefehl nicht gegeben. Wähle einen anderen, oder erlaube ihn in ihren Einstellungen.</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Kurzbefehl</translation>
    </message>
    <message>
        <source>Text into fields</source>
        <translation>Text in Felder</translation>
    </message>
    <message>
        <source>Pasting</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>Zwischenablage</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Indicator</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>By {interface}.</source>
        <translation>Über {interface}.</translation>
    </message>
    <message>
        <source>Not offered by this desktop: {interfaces}.</source>
        <translation>Von dieser Arbeitsumgebung nicht angeboten: {interfaces}.</translation>
    </message>
    <message>
        <source>Bind a key of the desktop to “quorvi toggle”.</source>
        <translation>Belege eine Taste der Arbeitsumgebung mit „quorvi toggle“.</translation>
    </message>
    <message>
        <source>Quorvi pastes instead.</source>
        <translation>Quorvi fügt stattdessen ein.</translation>
    </message>
    <message>
        <source>Where a field takes no text directly, Quorvi leaves it on the clipboard; paste it yourself.</source>
        <translation>Wo ein Feld keinen Text direkt annimmt, lässt Quorvi ihn in der Zwischenablage; füge ihn selbst ein.</translation>
    </message>
    <message>
        <source>Quorvi uses that of X11 programs.</source>
        <translation>Quorvi benutzt die der X11-Programme.</translation>
    </message>
    <message>
        <source>It is shown by X11, if the desktop runs X11 programs.</source>
        <translation>Sie wird über X11 gezeigt, wenn die Arbeitsumgebung X11-Programme ausführt.</translation>
    </message>
    <message>
        <source>This desktop lacks some of what Quorvi needs: it works only in windows of X11 programs. It works in all windows on sway, KDE Plasma and GNOME, and on desktops with X11.</source>
        <translation>Dieser Arbeitsumgebung fehlt etwas, was Quorvi braucht: Es arbeitet nur in Fenstern von X11-Programmen. In allen Fenstern arbeitet es mit sway, KDE Plasma und GNOME sowie mit X11.</translation>
    </message>
    <message>
        <source>This desktop has no shortcuts for programs. In its settings or configuration, bind a key to the command “quorvi toggle”, and another to “quorvi cancel”.</source>
        <translation>Diese Arbeitsumgebung hat keine Kurzbefehle für Programme. Belege in ihren Einstellungen oder ihrer Konfiguration eine Taste mit dem Befehl „quorvi toggle“ und eine mit „quorvi cancel“.</translation>
    </message>
    <message>
        <source>Quorvi presses no keys here until you allow it: “Press keys to paste” in Settings, under “This desktop”.</source>
        <translation>Quorvi drückt hier keine Tasten, bis du es erlaubst: „Zum Einfügen Tasten drücken“ in den Einstellungen, unter „Diese Arbeitsumgebung“.</translation>
    </message>
</context>
<context>
    <name>PrivacySettings</name>
    <message>
        <source>Privacy</source>
        <translation>Datenschutz</translation>
    </message>
    <message>
        <source>Audio uses your Mac’s default input. Dictations stop at 3 minutes. Local audio files are deleted after recording; retained text history and usage statistics sync through your private iCloud account when enabled. Configure retention above. Cloud processing follows your API account’s data settings.</source>
        <translation>Aufgenommen wird mit dem Mikrofon, das oben eingestellt ist. Diktate enden nach 3 Minuten. Tondateien werden nach der Aufnahme gelöscht; aufbewahrte Texte und Statistik werden über deinen eigenen Ordner oder Server abgeglichen, wenn du das einschaltest. Wie lange Texte bleiben, legst du oben fest. Die Verarbeitung in der Cloud richtet sich nach den Dateneinstellungen deines API-Kontos.</translation>
    </message>
    <message>
        <source>When Quorvi uses Paste, it briefly places the transcript on the clipboard and then restores it. Clipboard managers may retain a copy.</source>
        <translation>Zum Einsetzen legt Quorvi den Text kurz in die Zwischenablage und stellt sie dann wieder her. Programme zur Verwaltung der Zwischenablage behalten womöglich eine Kopie.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Barrierefreiheits-Bus</translation>
    </message>
    <message>
        <source>Manage</source>
        <translation>Verwalten</translation>
    </message>
    <message>
        <source>Manage %1</source>
        <translation>%1 verwalten</translation>
    </message>
    <message>
        <source>%1: allowed</source>
        <translation>%1: erlaubt</translation>
    </message>
    <message>
        <source>%1: not allowed</source>
        <translation>%1: nicht erlaubt</translation>
    </message>
    <message>
        <source>Keep a failed recording in memory for ten minutes</source>
        <translation>Gescheiterte Aufnahme zehn Minuten im Speicher behalten</translation>
    </message>
    <message>
        <source>If the speech service or the network fails, you can try again instead of dictating anew. The recording is never written to a disk, and gone when the screen is locked.</source>
        <translation>Wenn der Sprachdienst oder das Netz versagt, kannst du es noch einmal versuchen, statt neu zu diktieren. Die Aufnahme kommt auf keine Festplatte und ist weg, sobald der Bildschirm gesperrt wird.</translation>
    </message>
</context>
<context>
    <name>RecognitionSettings</name>
    <message>
        <source>Recognition</source>
        <translation>Erkennung</translation>
    </message>
    <message>
        <source>Language is detected automatically. Speak naturally in any supported language; your words stay in their original language.</source>
        <translation>Die Sprache wird von selbst erkannt. Sprich ganz natürlich in einer unterstützten Sprache; deine Worte bleiben in ihr.</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Recognition accuracy varies with the recording and model.</source>
        <translation>Wie genau die Erkennung ist, hängt von Aufnahme und Modell ab.</translation>
    </message>
    <message>
        <source>Names or terms you often use (optional)</source>
        <translation>Namen oder Begriffe, die du oft benutzt (optional)</translation>
    </message>
</context>
<context>
    <name>RecordingAppearanceSettings</name>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <source>Preview · microphone off</source>
        <translation>Vorschau · Mikrofon aus</translation>
    </message>
    <message>
        <source>Dictating into Text Editor</source>
        <translation>Diktat in: Texteditor</translation>
    </message>
</context>
<context>
    <name>RecordingHUD</name>
    <message>
        <source>Esc to cancel</source>
        <translation>Esc bricht ab</translation>
    </message>
    <message>
        <source>Quorvi dictation</source>
        <translation>Quorvi-Diktat</translation>
    </message>
    <message>
        <source>Recording time</source>
        <translation>Aufnahmezeit</translation>
    </message>
    <message>
        <source>Copy transcript</source>
        <translation>Text kopieren</translation>
    </message>
    <message numerus="yes">
        <source>%1 seconds</source>
        <translation>
            <numerusform>%1 Sekunde</numerusform>
            <numerusform>%1 Sekunden</numerusform>
        </translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Update %1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Noch einmal</translation>
    </message>
</context>
<context>
    <name>RecordingPanel</name>
    <message>
        <source>Quorvi dictation</source>
        <translation>Quorvi-Diktat</translation>
    </message>
</context>
<context>
    <name>RememberCorrectionButton</name>
    <message>
        <source>Remember correction</source>
        <translation>Korrektur merken</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>SET UP YOUR FLOW</source>
        <translation>RICHTE ES DIR EIN</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Recording appearance</source>
        <translation>Aussehen der Aufnahme</translation>
    </message>
    <message>
        <source>Search settings</source>
        <translation>Einstellungen durchsuchen</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>No setting matches.</source>
        <translation>Keine Einstellung passt.</translation>
    </message>
    <message numerus="yes">
        <source>%n sections match. Enter goes to the next match.</source>
        <translation>
            <numerusform>%n Abschnitt passt. Die Eingabetaste geht zum nächsten Treffer.</numerusform>
            <numerusform>%n Abschnitte passen. Die Eingabetaste geht zum nächsten Treffer.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SetupCard</name>
    <message>
        <source>Make it yours</source>
        <translation>Mach es zu deinem</translation>
    </message>
    <message>
        <source>ONE-TIME SETUP</source>
        <translation>EINMALIGE EINRICHTUNG</translation>
    </message>
    <message>
        <source>SET UP YOUR FLOW</source>
        <translation>RICHTE ES DIR EIN</translation>
    </message>
    <message>
        <source>OpenAI API key</source>
        <translation>OpenAI-API-Schlüssel</translation>
    </message>
    <message>
        <source>Stored securely in your Mac’s Keychain</source>
        <translation>Sicher in deinem Schlüsselbund aufbewahrt</translation>
    </message>
    <message>
        <source>Add key</source>
        <translation>Schlüssel hinzufügen</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Record only while you dictate</source>
        <translation>Nur während du diktierst</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Erlauben</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Barrierefreiheit</translation>
    </message>
    <message>
        <source>Use your shortcut and insert text</source>
        <translation>Über den Barrierefreiheits-Bus erfährt Quorvi, in welches Textfeld du schreibst</translation>
    </message>
    <message>
        <source>Enable keyboard access in Input Monitoring</source>
        <translation>Zugriff auf die Tastatur</translation>
    </message>
    <message>
        <source>If access is already enabled, quit and reopen Quorvi.</source>
        <translation>Dein Kurzbefehl braucht die Barrierefreiheit und X11. Wenn das hier bleibt, sagt „quorvi doctor“ in einem Terminal, warum.</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Use the offline recogniser</source>
        <translation>Erkenner ohne Netz benutzen</translation>
    </message>
    <message>
        <source>Speech service</source>
        <translation>Sprachdienst</translation>
    </message>
    <message>
        <source>Offline on this computer, where no key is needed</source>
        <translation>Ohne Netz auf diesem Computer, wo kein Schlüssel nötig ist</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Kurzbefehl</translation>
    </message>
</context>
<context>
    <name>ShownShortcut</name>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Rücktaste</translation>
    </message>
    <message>
        <source>Enter (keypad)</source>
        <translation>Eingabe (Ziffernblock)</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Einfg</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Pfeil links</translation>
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
        <source>Up</source>
        <translation>Pfeil auf</translation>
    </message>
    <message>
        <source>Right Alt (AltGr)</source>
        <translation>Rechte Alt-Taste (AltGr)</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Dictation</source>
        <translation>Diktat</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Insights</source>
        <translation>Einblicke</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Your voice, in your words.</source>
        <translation>Deine Stimme, deine Worte.</translation>
    </message>
    <message>
        <source>Automatic language</source>
        <translation>Sprache automatisch</translation>
    </message>
    <message>
        <source>Quorvi %1 · Native for Mac</source>
        <translation>Quorvi %1 · Für Linux</translation>
    </message>
    <message>
        <source>Sections</source>
        <translation>Abschnitte</translation>
    </message>
    <message>
        <source>Section: %1</source>
        <translation>Abschnitt: %1</translation>
    </message>
</context>
<context>
    <name>SpeechServiceSettings</name>
    <message>
        <source>Speech service</source>
        <translation>Sprachdienst</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OpenAI</source>
        <translation>OpenAI</translation>
    </message>
    <message>
        <source>Another service</source>
        <translation>Ein anderer Dienst</translation>
    </message>
    <message>
        <source>Offline (English)</source>
        <translation>Ohne Netz (Englisch)</translation>
    </message>
    <message>
        <source>Turns speech into text</source>
        <translation>Macht Sprache zu Text</translation>
    </message>
    <message>
        <source>Test the speech service</source>
        <translation>Den Sprachdienst prüfen</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Prüfung abbrechen</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Model (optional)</source>
        <translation>Modell (optional)</translation>
    </message>
    <message>
        <source>As the service calls it</source>
        <translation>Wie der Dienst es nennt</translation>
    </message>
    <message>
        <source>The service needs an API key</source>
        <translation>Der Dienst braucht einen API-Schlüssel</translation>
    </message>
    <message>
        <source>The environment variable QUORVI_SERVICE sets it to %1 until Quorvi is started without that variable.</source>
        <translation>Die Umgebungsvariable QUORVI_SERVICE stellt ihn auf %1, bis Quorvi ohne diese Variable gestartet wird.</translation>
    </message>
    <message>
        <source>Recordings go to api.openai.com with your API key.</source>
        <translation>Aufnahmen gehen mit deinem API-Schlüssel an api.openai.com.</translation>
    </message>
    <message>
        <source>A service with the interface of OpenAI&apos;s speech-to-text API: your own server, or that of another provider. Its key is kept apart from the others.</source>
        <translation>Ein Dienst mit der Schnittstelle von OpenAIs Spracherkennung: dein eigener Server oder der eines anderen Anbieters. Sein Schlüssel wird getrennt von den anderen aufbewahrt.</translation>
    </message>
    <message>
        <source>Recordings stay on this computer, and no key is needed. English only, and good for short sentences. The recogniser runs while you dictate and five minutes longer.</source>
        <translation>Aufnahmen bleiben auf diesem Computer, und kein Schlüssel ist nötig. Nur Englisch und gut für kurze Sätze. Der Erkenner läuft, während du diktierst, und fünf Minuten länger.</translation>
    </message>
    <message>
        <source>Waiting for the service…</source>
        <translation>Warte auf den Dienst …</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>In progress</source>
        <translation>Läuft</translation>
    </message>
</context>
<context>
    <name>StatusCard</name>
    <message>
        <source>Automatic language detection</source>
        <translation>Sprache wird von selbst erkannt</translation>
    </message>
    <message>
        <source>Click a text field in any app, then use your shortcut. You can close this window; Quorvi keeps running in the menu bar.</source>
        <translation>Klicke in ein Textfeld eines beliebigen Programms und benutze deinen Kurzbefehl. Du kannst dieses Fenster schließen; Quorvi läuft im Hintergrund weiter, mit einem Symbol in der Leiste.</translation>
    </message>
    <message>
        <source>Recording time</source>
        <translation>Aufnahmezeit</translation>
    </message>
    <message>
        <source>Stop &amp;&amp; insert</source>
        <translation>Beenden &amp;&amp; einsetzen</translation>
    </message>
    <message>
        <source>Stop &amp; insert</source>
        <translation>Beenden &amp; einsetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Change shortcut</source>
        <translation>Kurzbefehl ändern</translation>
    </message>
    <message>
        <source>Keep the shortcut</source>
        <translation>Kurzbefehl behalten</translation>
    </message>
    <message>
        <source>Click a text field in another app during the 10-second countdown. Quorvi will paste a short sample without recording or an API request.</source>
        <translation>Klicke während der 10 Sekunden in ein Textfeld eines anderen Programms. Quorvi setzt ein kurzes Beispiel ein, ohne Aufnahme und ohne API.</translation>
    </message>
    <message>
        <source>Test paste</source>
        <translation>Einsetzen prüfen</translation>
    </message>
    <message>
        <source>Cancel test</source>
        <translation>Prüfung abbrechen</translation>
    </message>
    <message>
        <source>Ready when you are</source>
        <translation>Bereit, wenn du es bist</translation>
    </message>
    <message>
        <source>Complete setup to start</source>
        <translation>Schließe die Einrichtung ab</translation>
    </message>
    <message>
        <source>Press the new shortcut. Esc keeps %1.</source>
        <translation>Drücke den neuen Kurzbefehl. Mit Esc bleibt es bei: %1.</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Kurzbefehl: %1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Noch einmal</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Discard the recording</source>
        <translation>Aufnahme verwerfen</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Quorvi — multilingual dictation</source>
        <translation>Quorvi — mehrsprachiges Diktat</translation>
    </message>
    <message>
        <source>Stop &amp; insert</source>
        <translation>Beenden &amp; einsetzen</translation>
    </message>
    <message>
        <source>Cancel dictation</source>
        <translation>Diktat abbrechen</translation>
    </message>
    <message>
        <source>Open Quorvi…</source>
        <translation>Quorvi öffnen …</translation>
    </message>
    <message>
        <source>History…</source>
        <translation>Verlauf …</translation>
    </message>
    <message>
        <source>Insights…</source>
        <translation>Einblicke …</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Copy last transcript</source>
        <translation>Letzten Text kopieren</translation>
    </message>
    <message>
        <source>Reset dictation</source>
        <translation>Diktat zurücksetzen</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Quit Quorvi</source>
        <translation>Quorvi beenden</translation>
    </message>
    <message>
        <source>Restore my clipboard</source>
        <translation>Meine Zwischenablage wiederherstellen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Noch einmal</translation>
    </message>
</context>
<context>
    <name>TranscriptCard</name>
    <message>
        <source>Last transcript</source>
        <translation>Letzter Text</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Clear transcript</source>
        <translation>Text verwerfen</translation>
    </message>
    <message>
        <source>This copy stays until Quorvi quits. Saved dictations are in History.</source>
        <translation>Diese Kopie bleibt, bis Quorvi beendet wird. Gesicherte Diktate stehen im Verlauf.</translation>
    </message>
</context>
<context>
    <name>TrayNotice</name>
    <message>
        <source>This desktop shows no tray icons. Quorvi keeps running when you close this window; start it again to come back here.</source>
        <translation>Diese Arbeitsumgebung zeigt keine Symbole in einer Leiste. Quorvi läuft weiter, wenn du dieses Fenster schließt; starte es erneut, um hierher zurückzukommen.</translation>
    </message>
    <message>
        <source>Quit Quorvi</source>
        <translation>Quorvi beenden</translation>
    </message>
</context>
<context>
    <name>TryItCard</name>
    <message>
        <source>Try it here</source>
        <translation>Probier es hier aus</translation>
    </message>
    <message>
        <source>CLICK BELOW, THEN DICTATE</source>
        <translation>UNTEN KLICKEN, DANN DIKTIEREN</translation>
    </message>
    <message>
        <source>Dictation test field</source>
        <translation>Feld zum Ausprobieren</translation>
    </message>
    <message>
        <source>Hello, world. Καλημέρα, κόσμε.</source>
        <translation>Hello, world. Καλημέρα, κόσμε.</translation>
    </message>
</context>
<context>
    <name>UpdateSettings</name>
    <message>
        <source>App updates</source>
        <translation>Updates</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>Von selbst nach Updates suchen</translation>
    </message>
    <message>
        <source>New releases are downloaded securely. Quorvi will ask before installing and relaunching.</source>
        <translation>Neue Versionen werden sicher geladen. Quorvi fragt, bevor es sie installiert und neu startet.</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Quorvi Updates</source>
        <translation>Quorvi-Updates</translation>
    </message>
    <message>
        <source>Release notes</source>
        <translation>Versionshinweise</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Install…</source>
        <translation>Installieren …</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Verifying its signature…</source>
        <translation>Die Signatur wird geprüft …</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Es wird nach Updates gesucht …</translation>
    </message>
    <message>
        <source>No update available</source>
        <translation>Kein Update verfügbar</translation>
    </message>
    <message>
        <source>Quorvi %1 is available</source>
        <translation>Quorvi %1 ist verfügbar</translation>
    </message>
    <message>
        <source>Downloading Quorvi %1…</source>
        <translation>Quorvi %1 wird geladen …</translation>
    </message>
    <message>
        <source>Quorvi %1 is ready to install</source>
        <translation>Quorvi %1 kann installiert werden</translation>
    </message>
    <message>
        <source>Opening the installer…</source>
        <translation>Das Installationsprogramm wird geöffnet …</translation>
    </message>
    <message>
        <source>The installer is open</source>
        <translation>Das Installationsprogramm ist offen</translation>
    </message>
    <message>
        <source>Quorvi %1 was not installed</source>
        <translation>Quorvi %1 wurde nicht installiert</translation>
    </message>
    <message>
        <source>Can&apos;t look for updates</source>
        <translation>Es kann nicht nach Updates gesucht werden</translation>
    </message>
    <message>
        <source>You have Quorvi %1.</source>
        <translation>Du hast Quorvi %1.</translation>
    </message>
    <message>
        <source>Its signature has been verified. Your system&apos;s package installer will open, and may ask for your password.</source>
        <translation>Die Signatur ist geprüft. Das Installationsprogramm deines Systems öffnet sich und fragt vielleicht nach deinem Passwort.</translation>
    </message>
</context>
<context>
    <name>UsageCostSection</name>
    <message>
        <source>No completed dictations in this period.</source>
        <translation>Keine fertigen Diktate in diesem Zeitraum.</translation>
    </message>
    <message>
        <source>Estimated API cost</source>
        <translation>Geschätzte API-Kosten</translation>
    </message>
    <message>
        <source>OpenAI pricing ↗</source>
        <translation>Preise von OpenAI ↗</translation>
    </message>
    <message>
        <source>Cost period</source>
        <translation>Zeitraum der Kosten</translation>
    </message>
    <message>
        <source>Estimate before tax for completed dictations in your Quorvi history, including synced Macs. Deleted dictations, failed or cancelled requests, and usage in other apps are excluded. Actual charges may differ.</source>
        <translation>Schätzung vor Steuern für fertige Diktate in deinem Verlauf, auch von abgeglichenen Computern. Gelöschte Diktate, gescheiterte oder abgebrochene Anfragen und die Nutzung in anderen Programmen sind nicht dabei. Die Rechnung kann abweichen.</translation>
    </message>
</context>
</TS>
