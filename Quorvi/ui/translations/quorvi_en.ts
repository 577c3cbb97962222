<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AccountSyncSettings</name>
    <message>
        <source>Account &amp; sync</source>
        <translation>Account &amp; sync</translation>
    </message>
    <message>
        <source>Sync with my Apple Account</source>
        <translation>Sync with my other computers</translation>
    </message>
    <message>
        <source>Sync now</source>
        <translation>Sync now</translation>
    </message>
    <message>
        <source>Settings, corrections, retained history and usage sync privately between Macs signed into the same iCloud account. Offline changes are saved and sent when you reconnect.</source>
        <translation>Settings, corrections, retained history and usage sync privately between your computers, through a folder or a server of your own. Offline changes are saved and sent when you reconnect.</translation>
    </message>
    <message>
        <source>Microphone and Accessibility permissions must be granted separately on each Mac. Audio recordings are never synced.</source>
        <translation>The microphone and accessibility are set up separately on each computer. Audio recordings are never synced.</translation>
    </message>
    <message>
        <source>Shared folder: %1</source>
        <translation>Shared folder: %1</translation>
    </message>
    <message>
        <source>Server: %1</source>
        <translation>Server: %1</translation>
    </message>
    <message>
        <source>Quorvi&apos;s own folder can&apos;t be used. Check disk space and folder access.</source>
        <translation>Quorvi&apos;s own folder can&apos;t be used. Check disk space and folder access.</translation>
    </message>
    <message>
        <source>The shared folder can&apos;t be used. Check that it exists and that you may write to it, or choose another folder.</source>
        <translation>The shared folder can&apos;t be used. Check that it exists and that you may write to it, or choose another folder.</translation>
    </message>
    <message>
        <source>Last synced %1 · %2 pending</source>
        <translation>Last synced %1 · %2 pending</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Check</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Check where the data are shared</source>
        <translation>Check where the data are shared</translation>
    </message>
    <message>
        <source>Cancel the check</source>
        <translation>Cancel the check</translation>
    </message>
    <message>
        <source>The server does not let you in. Check its address and the user, and enter the password again.</source>
        <translation>The server does not let you in. Check its address and the user, and enter the password again.</translation>
    </message>
    <message>
        <source>Writing something and reading it back…</source>
        <translation>Writing something and reading it back…</translation>
    </message>
    <message>
        <source>It works: data can be written and read back.</source>
        <translation>It works: data can be written and read back.</translation>
    </message>
</context>
<context>
    <name>ApiKeySettings</name>
    <message>
        <source>OpenAI API key</source>
        <translation>OpenAI API key</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Saved</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Get an API key ↗</source>
        <translation>Get an API key ↗</translation>
    </message>
    <message>
        <source>Remove key</source>
        <translation>Remove key</translation>
    </message>
    <message>
        <source>Sync API key through iCloud Keychain</source>
        <translation>Mark the API key in the keyring for sync</translation>
    </message>
    <message>
        <source>Your key stays in macOS Keychain. Recordings go directly to OpenAI for transcription. API usage is billed to your OpenAI account.</source>
        <translation>Your key stays in your keyring. Recordings go directly to OpenAI for transcription. API usage is billed to your OpenAI account.</translation>
    </message>
    <message>
        <source>Enter a replacement key</source>
        <translation>Enter a replacement key</translation>
    </message>
    <message>
        <source>Paste your API key</source>
        <translation>Paste your API key</translation>
    </message>
    <message>
        <source>API key</source>
        <translation>API key</translation>
    </message>
    <message>
        <source>The key for %1. It stays in your keyring and is sent nowhere else.</source>
        <translation>The key for %1. It stays in your keyring and is sent nowhere else.</translation>
    </message>
    <message>
        <source>The environment variable QUORVI_API_KEY gives the key until Quorvi is started without that variable. What you change here counts until Quorvi ends; the key in your keyring stays as it is.</source>
        <translation>The environment variable QUORVI_API_KEY gives the key until Quorvi is started without that variable. What you change here counts until Quorvi ends; the key in your keyring stays as it is.</translation>
    </message>
</context>
<context>
    <name>AppWindow</name>
    <message>
        <source>Quorvi is running</source>
        <translation>Quorvi is running</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons. Start Quorvi again to open its window.</source>
        <translation>This desktop shows no tray icons. Start Quorvi again to open its window.</translation>
    </message>
</context>
<context>
    <name>CloudComputersList</name>
    <message>
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>Computers that share this folder</source>
        <translation>Computers that share this folder</translation>
    </message>
    <message>
        <source>Name of this computer</source>
        <translation>Name of this computer</translation>
    </message>
    <message>
        <source>Rename this computer</source>
        <translation>Rename this computer</translation>
    </message>
    <message>
        <source>%1 (this computer)</source>
        <translation>%1 (this computer)</translation>
    </message>
    <message>
        <source>Last change %1</source>
        <translation>Last change %1</translation>
    </message>
    <message>
        <source>Remove…</source>
        <translation>Remove…</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Remove %1</translation>
    </message>
    <message>
        <source>Remove %1?</source>
        <translation>Remove %1?</translation>
    </message>
    <message>
        <source>Only for a computer that you no longer have or that no longer uses this folder: its files are deleted. Nothing that only it had is lost.</source>
        <translation>Only for a computer that you no longer have or that no longer uses this folder: its files are deleted. Nothing that only it had is lost.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
</context>
<context>
    <name>CloudPlaceSettings</name>
    <message>
        <source>Where your computers share the data</source>
        <translation>Where your computers share the data</translation>
    </message>
    <message>
        <source>Only this computer</source>
        <translation>Only this computer</translation>
    </message>
    <message>
        <source>A shared folder</source>
        <translation>A shared folder</translation>
    </message>
    <message>
        <source>A PostgreSQL server</source>
        <translation>A PostgreSQL server</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Browse…</translation>
    </message>
    <message>
        <source>Browse for the folder</source>
        <translation>Browse for the folder</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>The folder&apos;s path on this computer</source>
        <translation>The folder&apos;s path on this computer</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
    <message>
        <source>The account on the server</source>
        <translation>The account on the server</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Empty leaves the stored one as it is</source>
        <translation>Empty leaves the stored one as it is</translation>
    </message>
    <message>
        <source>Browse for the certificate</source>
        <translation>Browse for the certificate</translation>
    </message>
    <message>
        <source>Certificate of the server&apos;s authority (optional)</source>
        <translation>Certificate of the server&apos;s authority (optional)</translation>
    </message>
    <message>
        <source>One that this computer trusts already</source>
        <translation>One that this computer trusts already</translation>
    </message>
    <message>
        <source>The data stay on this computer. What is in a folder or on a server stays there for the other computers.</source>
        <translation>The data stay on this computer. What is in a folder or on a server stays there for the other computers.</translation>
    </message>
    <message>
        <source>Keep the data on this computer only</source>
        <translation>Keep the data on this computer only</translation>
    </message>
    <message>
        <source>A folder that Syncthing, Nextcloud, Dropbox, NFS or the like keeps the same on your computers. It must carry over all files and subfolders, in any order, and never change or leave out any. Whoever can read the folder can read your dictations.</source>
        <translation>A folder that Syncthing, Nextcloud, Dropbox, NFS or the like keeps the same on your computers. It must carry over all files and subfolders, in any order, and never change or leave out any. Whoever can read the folder can read your dictations.</translation>
    </message>
    <message>
        <source>Use this folder</source>
        <translation>Use this folder</translation>
    </message>
    <message>
        <source>A database that was set up with quorvi-cloud-server. The password goes into your keyring. The server must have a certificate that this computer trusts, or that the authority below has signed.</source>
        <translation>A database that was set up with quorvi-cloud-server. The password goes into your keyring. The server must have a certificate that this computer trusts, or that the authority below has signed.</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Use this server</translation>
    </message>
    <message>
        <source>Choose the shared folder</source>
        <translation>Choose the shared folder</translation>
    </message>
    <message>
        <source>Choose the certificate</source>
        <translation>Choose the certificate</translation>
    </message>
    <message>
        <source>The keyring did not take the password. Unlock it and try again.</source>
        <translation>The keyring did not take the password. Unlock it and try again.</translation>
    </message>
</context>
<context>
    <name>Confirmation</name>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CorrectionEditor</name>
    <message>
        <source>Remember a correction</source>
        <translation>Remember a correction</translation>
    </message>
    <message>
        <source>Save a word or short phrase once. Quorvi will use your preferred spelling in future dictations.</source>
        <translation>Save a word or short phrase once. Quorvi will use your preferred spelling in future dictations.</translation>
    </message>
    <message>
        <source>e.g. Russet Miner</source>
        <translation>e.g. Russet Miner</translation>
    </message>
    <message>
        <source>e.g. russetmanor</source>
        <translation>e.g. russetmanor</translation>
    </message>
    <message>
        <source>Quorvi writes</source>
        <translation>Quorvi writes</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Replace with</translation>
    </message>
    <message>
        <source>Use the exact replacement you want, including capitals. This saves a rule for future text; existing text stays as written.</source>
        <translation>Use the exact replacement you want, including capitals. This saves a rule for future text; existing text stays as written.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Save correction</source>
        <translation>Save correction</translation>
    </message>
    <message>
        <source>That phrase does not match this transcript. The rule will still apply to future matches.</source>
        <translation>That phrase does not match this transcript. The rule will still apply to future matches.</translation>
    </message>
</context>
<context>
    <name>CorrectionRow</name>
    <message>
        <source>Enable correction</source>
        <translation>Enable correction</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>Delete correction</source>
        <translation>Delete correction</translation>
    </message>
    <message>
        <source>Learned from an edit</source>
        <translation>Learned from an edit</translation>
    </message>
    <message>
        <source>Saved by you</source>
        <translation>Saved by you</translation>
    </message>
    <message>
        <source>Enable correction for %1</source>
        <translation>Enable correction for %1</translation>
    </message>
    <message>
        <source>Edit correction for %1</source>
        <translation>Edit correction for %1</translation>
    </message>
    <message>
        <source>Delete correction for %1</source>
        <translation>Delete correction for %1</translation>
    </message>
</context>
<context>
    <name>CorrectionsSettings</name>
    <message>
        <source>Corrections</source>
        <translation>Corrections</translation>
    </message>
    <message>
        <source>Keep brand names and preferred spellings consistent. Corrections apply automatically before Quorvi pastes or saves your text.</source>
        <translation>Keep brand names and preferred spellings consistent. Corrections apply automatically before Quorvi pastes or saves your text.</translation>
    </message>
    <message>
        <source>Learn from my edits in other apps</source>
        <translation>Learn from my edits in other apps</translation>
    </message>
    <message>
        <source>Correct the text in the same field, then pause for two seconds. Quorvi saves short spelling corrections automatically and shows Correction saved. It watches for up to one minute after pasting. Mixed Greek and Latin spellings work too.</source>
        <translation>Correct the text in the same field, then pause for two seconds. Quorvi saves short spelling corrections automatically and shows Correction saved. It watches for up to one minute after pasting. Mixed Greek and Latin spellings work too.</translation>
    </message>
    <message>
        <source>Test automatic learning</source>
        <translation>Test automatic learning</translation>
    </message>
    <message>
        <source>Click a field in another app within 10 seconds. Then change oxygen to oxygon in the sample and pause. No recording or API usage.</source>
        <translation>Click a field in another app within 10 seconds. Then change oxygen to oxygon in the sample and pause. No recording or API usage.</translation>
    </message>
    <message>
        <source>Add correction</source>
        <translation>Add correction</translation>
    </message>
    <message>
        <source>Saved corrections</source>
        <translation>Saved corrections</translation>
    </message>
    <message>
        <source>Search corrections</source>
        <translation>Search corrections</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Clear search</translation>
    </message>
    <message>
        <source>No saved corrections. Add the phrase Quorvi writes and the spelling you want.</source>
        <translation>No saved corrections. Add the phrase Quorvi writes and the spelling you want.</translation>
    </message>
    <message>
        <source>Show more</source>
        <translation>Show more</translation>
    </message>
    <message>
        <source>Matching ignores capitalization and extra spaces, and uses whole words. Your replacement keeps its exact spelling and capitalization. Saved rules sync between your Macs when iCloud sync is enabled.</source>
        <translation>Matching ignores capitalization and extra spaces, and uses whole words. Your replacement keeps its exact spelling and capitalization. Saved rules sync between your computers when sync is enabled.</translation>
    </message>
    <message>
        <source>Automatic learning is off.</source>
        <translation>Automatic learning is off.</translation>
    </message>
</context>
<context>
    <name>DesktopSettings</name>
    <message>
        <source>This desktop</source>
        <translation>This desktop</translation>
    </message>
    <message>
        <source>Press keys to paste</source>
        <translation>Press keys to paste</translation>
    </message>
    <message>
        <source>For fields that take text in no other way; without it, the text is left on the clipboard. The desktop may ask you once: allow remote interaction there, and let it remember that. While Quorvi pastes, the desktop shows that it is shared.</source>
        <translation>For fields that take text in no other way; without it, the text is left on the clipboard. The desktop may ask you once: allow remote interaction there, and let it remember that. While Quorvi pastes, the desktop shows that it is shared.</translation>
    </message>
    <message>
        <source>The desktop is asking you.</source>
        <translation>The desktop is asking you.</translation>
    </message>
    <message>
        <source>The desktop does not allow it, or does not remember that you do.</source>
        <translation>The desktop does not allow it, or does not remember that you do.</translation>
    </message>
</context>
<context>
    <name>DictationPage</name>
    <message>
        <source>Speak in your language.</source>
        <translation>Speak in your language.</translation>
    </message>
    <message>
        <source>Quorvi stays in your menu bar. Press Esc to cancel a dictation.</source>
        <translation>Quorvi stays in your tray. Press Esc to cancel a dictation.</translation>
    </message>
    <message>
        <source>Quorvi stays in your menu bar. “quorvi cancel” cancels a dictation.</source>
        <translation>Quorvi stays in your tray. “quorvi cancel” cancels a dictation.</translation>
    </message>
</context>
<context>
    <name>DictationSettings</name>
    <message>
        <source>Dictation</source>
        <translation>Dictation</translation>
    </message>
    <message>
        <source>Press and release Left or Right Control, Right Option, or a function key. You can also use a key with ⌘ / ⌃ / ⌥. Esc cancels.</source>
        <translation>Press and release Left or Right Ctrl, Right Alt, or a function key. You can also use a key with Ctrl, Alt or Super. Esc cancels.</translation>
    </message>
    <message>
        <source>Record custom shortcut…</source>
        <translation>Record custom shortcut…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Keep the shortcut</source>
        <translation>Keep the shortcut</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Shortcut</translation>
    </message>
    <message>
        <source>Choose a shortcut that no other dictation app, and no other application, uses already. Function keys may require Fn.</source>
        <translation>Choose a shortcut that no other dictation app, and no other application, uses already. Function keys may require Fn.</translation>
    </message>
    <message>
        <source>Shortcut mode</source>
        <translation>Shortcut mode</translation>
    </message>
    <message>
        <source>Reset dictation</source>
        <translation>Reset dictation</translation>
    </message>
    <message>
        <source>If your shortcut stops responding, reset dictation to reconnect keyboard access.</source>
        <translation>If your shortcut stops responding, reset dictation to reconnect keyboard access.</translation>
    </message>
    <message>
        <source>Interaction</source>
        <translation>Interaction</translation>
    </message>
    <message>
        <source>Start sound</source>
        <translation>Start sound</translation>
    </message>
    <message>
        <source>Preview start</source>
        <translation>Preview start</translation>
    </message>
    <message>
        <source>Stop sound</source>
        <translation>Stop sound</translation>
    </message>
    <message>
        <source>Preview stop</source>
        <translation>Preview stop</translation>
    </message>
    <message>
        <source>Choose a separate cue for starting and stopping. Silent disables just that cue.</source>
        <translation>Choose a separate cue for starting and stopping. Silent disables just that cue.</translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation>Press a key…</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Shortcut: %1</translation>
    </message>
    <message>
        <source>Press the new shortcut. Esc keeps %1.</source>
        <translation>Press the new shortcut. Esc keeps %1.</translation>
    </message>
    <message>
        <source>Play sounds</source>
        <translation>Play sounds</translation>
    </message>
    <message>
        <source>Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. Esc cancels.</source>
        <translation>Use a function key, or a key with Ctrl, Alt or Super. This desktop reports no lone modifiers. Esc cancels.</translation>
    </message>
    <message>
        <source>Add the shortcut to the desktop&apos;s settings</source>
        <translation>Add the shortcut to the desktop&apos;s settings</translation>
    </message>
    <message>
        <source>The desktop runs a small program of Quorvi when you press the shortcut. You find it among the custom shortcuts in the desktop&apos;s settings while Quorvi runs. Switched off, nothing of it stays there.</source>
        <translation>The desktop runs a small program of Quorvi when you press the shortcut. You find it among the custom shortcuts in the desktop&apos;s settings while Quorvi runs. Switched off, nothing of it stays there.</translation>
    </message>
    <message>
        <source>Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. “quorvi cancel” cancels.</source>
        <translation>Use a function key, or a key with Ctrl, Alt or Super. This desktop reports no lone modifiers. “quorvi cancel” cancels.</translation>
    </message>
</context>
<context>
    <name>GeneralSettings</name>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Launch Quorvi at login</source>
        <translation>Launch Quorvi at login</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Open startup settings</translation>
    </message>
</context>
<context>
    <name>HistoryPage</name>
    <message>
        <source>YOUR WORDS, KEPT CLOSE</source>
        <translation>YOUR WORDS, KEPT CLOSE</translation>
    </message>
    <message>
        <source>History</source>
        <translation>History</translation>
    </message>
    <message>
        <source>Search and reuse your dictations.</source>
        <translation>Search and reuse your dictations.</translation>
    </message>
    <message>
        <source>Load more</source>
        <translation>Load more</translation>
    </message>
    <message>
        <source>Saving new transcripts is off. Existing history is still available.</source>
        <translation>Saving new transcripts is off. Existing history is still available.</translation>
    </message>
    <message>
        <source>Search dictation history</source>
        <translation>Search dictation history</translation>
    </message>
    <message>
        <source>Search transcripts or apps</source>
        <translation>Search transcripts or apps</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Clear search</translation>
    </message>
    <message>
        <source>No matching dictations</source>
        <translation>No matching dictations</translation>
    </message>
    <message>
        <source>Your next dictation starts your history</source>
        <translation>Your next dictation starts your history</translation>
    </message>
    <message>
        <source>Transcript saving is paused</source>
        <translation>Transcript saving is paused</translation>
    </message>
    <message>
        <source>Try a word, phrase, or app name.</source>
        <translation>Try a word, phrase, or app name.</translation>
    </message>
    <message>
        <source>Manage transcript saving and retention in Settings.</source>
        <translation>Manage transcript saving and retention in Settings.</translation>
    </message>
    <message>
        <source>Delete this dictation?</source>
        <translation>Delete this dictation?</translation>
    </message>
    <message>
        <source>It will be removed from history and usage statistics, including your other Macs when iCloud sync is enabled.</source>
        <translation>It will be removed from history and usage statistics, including your other computers when sync is enabled.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
</context>
<context>
    <name>HistoryRow</name>
    <message>
        <source>Show full text</source>
        <translation>Show full text</translation>
    </message>
    <message>
        <source>Copy dictation</source>
        <translation>Copy dictation</translation>
    </message>
    <message>
        <source>Delete dictation</source>
        <translation>Delete dictation</translation>
    </message>
    <message>
        <source>Show less</source>
        <translation>Show less</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copied</translation>
    </message>
</context>
<context>
    <name>HistorySettings</name>
    <message>
        <source>History &amp; statistics</source>
        <translation>History &amp; statistics</translation>
    </message>
    <message>
        <source>Save transcript history</source>
        <translation>Save transcript history</translation>
    </message>
    <message>
        <source>Keep transcript text</source>
        <translation>Keep transcript text</translation>
    </message>
    <message>
        <source>Delete all history and statistics…</source>
        <translation>Delete all history and statistics…</translation>
    </message>
    <message>
        <source>Turning this off stops saving new text. Existing history remains, and usage statistics continue without transcript text.</source>
        <translation>Turning this off stops saving new text. Existing history remains, and usage statistics continue without transcript text.</translation>
    </message>
    <message>
        <source>Older text is removed automatically. Word counts, speaking time, cost estimates, dates and app names remain for Insights. Recordings are not kept.</source>
        <translation>Older text is removed automatically. Word counts, speaking time, cost estimates, dates and app names remain for Insights. Recordings are not kept.</translation>
    </message>
    <message>
        <source>Delete all history and statistics?</source>
        <translation>Delete all history and statistics?</translation>
    </message>
    <message>
        <source>This permanently removes every saved Quorvi dictation and resets your usage totals, including your other Macs when iCloud sync is enabled.</source>
        <translation>This permanently removes every saved Quorvi dictation and resets your usage totals, including your other computers when sync is enabled.</translation>
    </message>
    <message>
        <source>Delete all</source>
        <translation>Delete all</translation>
    </message>
</context>
<context>
    <name>HistoryTexts</name>
    <message>
        <source>%1 dictation</source>
        <translation>%1 dictation</translation>
    </message>
    <message numerus="yes">
        <source>%1 dictations</source>
        <translation>
            <numerusform>%1 dictation</numerusform>
            <numerusform>%1 dictations</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 words</source>
        <translation>
            <numerusform>%1 word</numerusform>
            <numerusform>%1 words</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · older dictations</source>
        <translation>%1 · older dictations</translation>
    </message>
    <message>
        <source>%1 min · %2/min</source>
        <translation>%1 min · %2/min</translation>
    </message>
    <message>
        <source>USD rate checked %1. GPT-4o model rates are approximate per-minute equivalents.</source>
        <translation>USD rate checked %1. GPT-4o model rates are approximate per-minute equivalents.</translation>
    </message>
    <message>
        <source>For %1 older dictation, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</source>
        <translation>For %1 older dictation, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</translation>
    </message>
    <message numerus="yes">
        <source>For %1 older dictations, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</source>
        <translation>
            <numerusform>For %1 older dictation, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</numerusform>
            <numerusform>For %1 older dictations, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 sec</source>
        <translation>%1 sec</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1h %2m</translation>
    </message>
    <message>
        <source>Top %1 of %2 apps</source>
        <translation>Top %1 of %2 apps</translation>
    </message>
    <message numerus="yes">
        <source>%1-day streak</source>
        <translation>
            <numerusform>%1-day streak</numerusform>
            <numerusform>%1-day streak</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Best: %1 days · all time</source>
        <translation>
            <numerusform>Best: %1 day · all time</numerusform>
            <numerusform>Best: %1 days · all time</numerusform>
        </translation>
    </message>
    <message>
        <source>TODAY</source>
        <translation>TODAY</translation>
    </message>
    <message>
        <source>YESTERDAY</source>
        <translation>YESTERDAY</translation>
    </message>
    <message numerus="yes">
        <source>%1 saved dictations</source>
        <translation>
            <numerusform>%1 saved dictation</numerusform>
            <numerusform>%1 saved dictations</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 words · %2 sec</source>
        <translation>
            <numerusform>%1 word · %2 sec</numerusform>
            <numerusform>%1 words · %2 sec</numerusform>
        </translation>
    </message>
    <message>
        <source>Offline recogniser</source>
        <translation>Offline recogniser</translation>
    </message>
    <message>
        <source>%1 min · not estimated</source>
        <translation>%1 min · not estimated</translation>
    </message>
</context>
<context>
    <name>InsightsPage</name>
    <message>
        <source>YOUR DICTATION, IN NUMBERS</source>
        <translation>YOUR DICTATION, IN NUMBERS</translation>
    </message>
    <message>
        <source>Insights</source>
        <translation>Insights</translation>
    </message>
    <message>
        <source>Usage across your synced Macs, measured from your Quorvi dictations.</source>
        <translation>Usage across your synced computers, measured from your Quorvi dictations.</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Period</translation>
    </message>
    <message>
        <source>Estimated API cost</source>
        <translation>Estimated API cost</translation>
    </message>
    <message>
        <source>Speed is total words divided by recording time. Counts include completed transcriptions, even when you copy them manually. Statistics start with this version of Quorvi.</source>
        <translation>Speed is total words divided by recording time. Counts include completed transcriptions, even when you copy them manually. Statistics start with this version of Quorvi.</translation>
    </message>
    <message>
        <source>Words dictated</source>
        <translation>Words dictated</translation>
    </message>
    <message>
        <source>Words per minute</source>
        <translation>Words per minute</translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation>Dictations</translation>
    </message>
    <message>
        <source>Speaking time</source>
        <translation>Speaking time</translation>
    </message>
    <message>
        <source>Apps used</source>
        <translation>Apps used</translation>
    </message>
    <message>
        <source>Daily words</source>
        <translation>Daily words</translation>
    </message>
    <message>
        <source>Daily words dictated in the last fourteen days</source>
        <translation>Daily words dictated in the last fourteen days</translation>
    </message>
    <message>
        <source>Last 14 days</source>
        <translation>Last 14 days</translation>
    </message>
    <message>
        <source>Usage by app</source>
        <translation>Usage by app</translation>
    </message>
    <message>
        <source>Your writing apps will appear here after you dictate.</source>
        <translation>Your writing apps will appear here after you dictate.</translation>
    </message>
    <message>
        <source>Activity over the last 12 weeks</source>
        <translation>Activity over the last 12 weeks</translation>
    </message>
    <message>
        <source>A day counts toward your streak when you complete at least one dictation.</source>
        <translation>A day counts toward your streak when you complete at least one dictation.</translation>
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
        <translation>Microphone</translation>
    </message>
    <message>
        <source>Record from</source>
        <translation>Record from</translation>
    </message>
    <message>
        <source>In use: %1</source>
        <translation>In use: %1</translation>
    </message>
    <message>
        <source>No microphone is connected.</source>
        <translation>No microphone is connected.</translation>
    </message>
    <message>
        <source>%1 is not connected. Until it is, Quorvi uses the system’s default.</source>
        <translation>%1 is not connected. Until it is, Quorvi uses the system’s default.</translation>
    </message>
    <message>
        <source>Speak, and the bars move. Quorvi listens for them only while they are shown, and keeps nothing.</source>
        <translation>Speak, and the bars move. Quorvi listens for them only while they are shown, and keeps nothing.</translation>
    </message>
    <message>
        <source>System default</source>
        <translation>System default</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (not connected)</translation>
    </message>
</context>
<context>
    <name>Model</name>
    <message>
        <source>Listening…</source>
        <translation>Listening…</translation>
    </message>
    <message>
        <source>Transcribing…</source>
        <translation>Transcribing…</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Inserting…</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>Ready to paste</source>
        <translation>Ready to paste</translation>
    </message>
    <message>
        <source>Needs attention</source>
        <translation>Needs attention</translation>
    </message>
    <message>
        <source>Ready when you are</source>
        <translation>Ready when you are</translation>
    </message>
    <message>
        <source>Correction saved</source>
        <translation>Correction saved</translation>
    </message>
    <message>
        <source>Classic</source>
        <translation>Classic</translation>
    </message>
    <message>
        <source>Soft</source>
        <translation>Soft</translation>
    </message>
    <message>
        <source>Chime</source>
        <translation>Chime</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Click</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Silent</translation>
    </message>
    <message>
        <source>Right ⌥</source>
        <translation>Right Alt</translation>
    </message>
    <message>
        <source>Left ⌃</source>
        <translation>Left Ctrl</translation>
    </message>
    <message>
        <source>Right ⌃</source>
        <translation>Right Ctrl</translation>
    </message>
    <message>
        <source>Key {code}</source>
        <translation>Key {code}</translation>
    </message>
    <message>
        <source>Hold to talk</source>
        <translation>Hold to talk</translation>
    </message>
    <message>
        <source>Press to toggle</source>
        <translation>Press to toggle</translation>
    </message>
    <message>
        <source>Glass</source>
        <translation>Glass</translation>
    </message>
    <message>
        <source>Midnight</source>
        <translation>Midnight</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>Paper</translation>
    </message>
    <message>
        <source>Frosted glass, blue accents, and a clean native feel.</source>
        <translation>Frosted glass, blue accents, and a clean native feel.</translation>
    </message>
    <message>
        <source>A dark capsule with bright mint accents.</source>
        <translation>A dark capsule with bright mint accents.</translation>
    </message>
    <message>
        <source>Warm ivory, ink lettering, and terracotta accents.</source>
        <translation>Warm ivory, ink lettering, and terracotta accents.</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 days</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 days</translation>
    </message>
    <message>
        <source>90 days</source>
        <translation>90 days</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 year</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>This month</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>All time</translation>
    </message>
    <message>
        <source>Until I delete it</source>
        <translation>Until I delete it</translation>
    </message>
    <message>
        <source>Click a text field in any app, then use your shortcut.</source>
        <translation>Click a text field in any app, then use your shortcut.</translation>
    </message>
    <message>
        <source>Open Quorvi from the menu bar, then Settings to finish API key and permission setup.</source>
        <translation>Open Quorvi from the tray, then Settings to finish API key and permission setup.</translation>
    </message>
    <message>
        <source>Dictating into {app}</source>
        <translation>Dictating into {app}</translation>
    </message>
    <message>
        <source>your app</source>
        <translation>your app</translation>
    </message>
    <message>
        <source>Converting speech to text…</source>
        <translation>Converting speech to text…</translation>
    </message>
    <message>
        <source>Inserting into {app}…</source>
        <translation>Inserting into {app}…</translation>
    </message>
    <message>
        <source>Field not checked · {app}</source>
        <translation>Field not checked · {app}</translation>
    </message>
    <message>
        <source>Paste sent to {app}.</source>
        <translation>Paste sent to {app}.</translation>
    </message>
    <message>
        <source>{app} did not take the text. It is on the clipboard.</source>
        <translation>{app} did not take the text. It is on the clipboard.</translation>
    </message>
    <message>
        <source>The old clipboard could not be kept.</source>
        <translation>The old clipboard could not be kept.</translation>
    </message>
    <message>
        <source>No audible speech detected. Hold the key a little longer and try again.</source>
        <translation>No audible speech detected. Hold the key a little longer and try again.</translation>
    </message>
    <message>
        <source>Choose a text field and start dictating again.</source>
        <translation>Choose a text field and start dictating again.</translation>
    </message>
    <message>
        <source>Text copied — press ⌘V in any text field.</source>
        <translation>Text copied — press Ctrl+V (in terminals Ctrl+Shift+V).</translation>
    </message>
    <message>
        <source>Could not copy. You can select the transcript in Quorvi.</source>
        <translation>Could not copy. You can select the transcript in Quorvi.</translation>
    </message>
    <message>
        <source>The clipboard is unavailable. Use Copy text to try again, or select the transcript in Quorvi.</source>
        <translation>The clipboard is unavailable. Use Copy text to try again, or select the transcript in Quorvi.</translation>
    </message>
    <message>
        <source>Cancelled. Ready for your next dictation.</source>
        <translation>Cancelled. Ready for your next dictation.</translation>
    </message>
    <message>
        <source>Keyboard access was interrupted. Try your shortcut again.</source>
        <translation>Keyboard access was interrupted. Try your shortcut again.</translation>
    </message>
    <message>
        <source>A required permission changed. Check Settings before dictating again.</source>
        <translation>A required permission changed. Check Settings before dictating again.</translation>
    </message>
    <message>
        <source>Dictation reset. Click a text field and hold your shortcut again.</source>
        <translation>Dictation reset. Click a text field and hold your shortcut again.</translation>
    </message>
    <message>
        <source>Dictation reset. Check permissions and API key setup in Settings.</source>
        <translation>Dictation reset. Check permissions and API key setup in Settings.</translation>
    </message>
    <message>
        <source>Use Left or Right Control, Right Option, a function key, or a shortcut with ⌘, ⌃ or ⌥.</source>
        <translation>Use Left or Right Ctrl, Right Alt, a function key, or a shortcut with Ctrl, Alt or Super.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly during your last dictation. Nothing of it was kept; please dictate it again.</source>
        <translation>Quorvi ended unexpectedly during your last dictation. Nothing of it was kept; please dictate it again.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while your last dictation was transcribed. Its text is not in the history; please dictate it again.</source>
        <translation>Quorvi ended unexpectedly while your last dictation was transcribed. Its text is not in the history; please dictate it again.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while it inserted your last dictation. Its text is in the history.</source>
        <translation>Quorvi ended unexpectedly while it inserted your last dictation. Its text is in the history.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while it inserted your last dictation. Its text is not in the history; look for it where you were writing.</source>
        <translation>Quorvi ended unexpectedly while it inserted your last dictation. Its text is not in the history; look for it where you were writing.</translation>
    </message>
    <message>
        <source>Enable Accessibility in Settings to test text insertion.</source>
        <translation>Enable accessibility in Settings to test text insertion.</translation>
    </message>
    <message>
        <source>Click a text field in another app. A sample will be pasted in 10 seconds. Esc cancels.</source>
        <translation>Click a text field in another app. A sample will be pasted in 10 seconds. Esc cancels.</translation>
    </message>
    <message>
        <source>Click a text field in another app. Sample in {seconds} seconds. Esc cancels.</source>
        <translation>Click a text field in another app. Sample in {seconds} seconds. Esc cancels.</translation>
    </message>
    <message>
        <source>Testing Paste in {app}…</source>
        <translation>Testing Paste in {app}…</translation>
    </message>
    <message>
        <source>Sample sent to {app}.</source>
        <translation>Sample sent to {app}.</translation>
    </message>
    <message>
        <source>Enable Accessibility in Quorvi Settings to insert text.</source>
        <translation>Enable accessibility in Quorvi’s Settings to insert text.</translation>
    </message>
    <message>
        <source>Click the text field you want to dictate into, then use your shortcut.</source>
        <translation>Click the text field you want to dictate into, then use your shortcut.</translation>
    </message>
    <message>
        <source>Click a text field in your writing app first. Quorvi can stay in the menu bar.</source>
        <translation>Click a text field in your writing app first. Quorvi can stay in the tray.</translation>
    </message>
    <message>
        <source>Select a regular text field to dictate.</source>
        <translation>Select a regular text field to dictate.</translation>
    </message>
    <message>
        <source>Accessibility access changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Access to the accessibility bus changed. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>The destination changed while dictating. Your transcript is ready to copy in Quorvi.</source>
        <translation>The destination changed while dictating. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>The active window changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>The active window changed. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>Select a regular text field. Your transcript is ready to copy in Quorvi.</source>
        <translation>Select a regular text field. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>The focused field changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>The focused field changed. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>The text cursor moved. Your transcript is ready to copy in Quorvi.</source>
        <translation>The text cursor moved. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>Could not send Paste. Your transcript is ready to copy in Quorvi.</source>
        <translation>Could not send Paste. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>A modifier key is still held. Release it and copy the transcript from Quorvi.</source>
        <translation>A modifier key is still held. Release it and copy the transcript from Quorvi.</translation>
    </message>
    <message>
        <source>Release your modifier keys before inserting. Your transcript is ready to copy in Quorvi.</source>
        <translation>Release your modifier keys before inserting. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>The clipboard is unavailable. Your transcript is ready to copy in Quorvi.</source>
        <translation>The clipboard is unavailable. Your transcript is ready to copy in Quorvi.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is incomplete.</source>
        <translation>The clipboard that was handed over is incomplete.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is unreadable.</source>
        <translation>The clipboard that was handed over is unreadable.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is damaged.</source>
        <translation>The clipboard that was handed over is damaged.</translation>
    </message>
    <message>
        <source>No recording is available.</source>
        <translation>No recording is available.</translation>
    </message>
    <message>
        <source>Recording stopped unexpectedly. Check your microphone and try again.</source>
        <translation>Recording stopped unexpectedly. Check your microphone and try again.</translation>
    </message>
    <message>
        <source>Recording stopped unexpectedly. Please try again.</source>
        <translation>Recording stopped unexpectedly. Please try again.</translation>
    </message>
    <message>
        <source>The microphone could not start. Check your macOS sound input.</source>
        <translation>The microphone could not start. Check the input device in your sound settings.</translation>
    </message>
    <message>
        <source>The folder for recordings could not be created: {reason}.</source>
        <translation>The folder for recordings could not be created: {reason}.</translation>
    </message>
    <message>
        <source>The folder for recordings could not be made private: {reason}.</source>
        <translation>The folder for recordings could not be made private: {reason}.</translation>
    </message>
    <message>
        <source>The folder for recordings, {folder}, is not a folder of your own. Remove it and try again.</source>
        <translation>The folder for recordings, {folder}, is not a folder of your own. Remove it and try again.</translation>
    </message>
    <message>
        <source>The recording could not be read: {reason}.</source>
        <translation>The recording could not be read: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be kept apart: {reason}.</source>
        <translation>The recording could not be kept apart: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be created: {reason}.</source>
        <translation>The recording could not be created: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be written: {reason}.</source>
        <translation>The recording could not be written: {reason}.</translation>
    </message>
    <message>
        <source>The sound could not be encoded: {reason}.</source>
        <translation>The sound could not be encoded: {reason}.</translation>
    </message>
    <message>
        <source>The sound can&apos;t be encoded: {reason}.</source>
        <translation>The sound can&apos;t be encoded: {reason}.</translation>
    </message>
    <message>
        <source>This system has no AAC encoder.</source>
        <translation>This system has no AAC encoder.</translation>
    </message>
    <message>
        <source>The sound is no 16-bit PCM WAV file.</source>
        <translation>The sound is no 16-bit PCM WAV file.</translation>
    </message>
    <message>
        <source>Add your OpenAI API key in Settings.</source>
        <translation>Add your OpenAI API key in Settings.</translation>
    </message>
    <message>
        <source>Your API key is unavailable. Add it again in Settings.</source>
        <translation>Your API key is unavailable. Add it again in Settings.</translation>
    </message>
    <message>
        <source>Enter a valid API key without spaces.</source>
        <translation>Enter a valid API key without spaces.</translation>
    </message>
    <message>
        <source>Saved in macOS Keychain.</source>
        <translation>Saved in your keyring.</translation>
    </message>
    <message>
        <source>API key removed.</source>
        <translation>API key removed.</translation>
    </message>
    <message>
        <source>API key sync enabled. Turn on iCloud Passwords &amp; Keychain on your other Macs.</source>
        <translation>API key marked for sync. It reaches your other computers if you sync your keyring.</translation>
    </message>
    <message>
        <source>API key kept on this Mac; iCloud copy removed.</source>
        <translation>API key kept on this computer; the copy for sync is removed.</translation>
    </message>
    <message>
        <source>This API key is kept in memory only. Save a key in Settings to sync it.</source>
        <translation>This API key is kept in memory only. Save a key in Settings to sync it.</translation>
    </message>
    <message>
        <source>Could not save your API key to Keychain ({status}).</source>
        <translation>Could not save your API key in the keyring ({status}).</translation>
    </message>
    <message>
        <source>Could not update iCloud Keychain ({status}).</source>
        <translation>Could not update the copy for sync in the keyring ({status}).</translation>
    </message>
    <message>
        <source>Could not remove the key from Keychain ({status}).</source>
        <translation>Could not remove the key from the keyring ({status}).</translation>
    </message>
    <message>
        <source>Could not remove the iCloud Keychain copy ({status}).</source>
        <translation>Could not remove the copy for sync from the keyring ({status}).</translation>
    </message>
    <message>
        <source>Your API key was rejected. Replace it in Settings.</source>
        <translation>Your API key was rejected. Replace it in Settings.</translation>
    </message>
    <message>
        <source>This API project cannot use the selected model. Try GPT-4o Transcribe in Settings.</source>
        <translation>This API project cannot use the selected model. Try GPT-4o Transcribe in Settings.</translation>
    </message>
    <message>
        <source>The recording is too large. Try a shorter dictation.</source>
        <translation>The recording is too large. Try a shorter dictation.</translation>
    </message>
    <message>
        <source>The API is rate limited or has no remaining credit. Check your OpenAI API billing and try again.</source>
        <translation>The API is rate limited or has no remaining credit. Check your OpenAI API billing and try again.</translation>
    </message>
    <message>
        <source>The transcription service is temporarily unavailable. Please try again.</source>
        <translation>The transcription service is temporarily unavailable. Please try again.</translation>
    </message>
    <message>
        <source>Transcription failed (HTTP {status}). Check your model and try again.</source>
        <translation>Transcription failed (HTTP {status}). Check your model and try again.</translation>
    </message>
    <message>
        <source>The transcription service returned no response.</source>
        <translation>The transcription service returned no response.</translation>
    </message>
    <message>
        <source>The transcription service returned an unreadable result.</source>
        <translation>The transcription service returned an unreadable result.</translation>
    </message>
    <message>
        <source>No speech was recognized. Try again closer to the microphone.</source>
        <translation>No speech was recognized. Try again closer to the microphone.</translation>
    </message>
    <message>
        <source>This recording is empty or too large. Please record a shorter dictation.</source>
        <translation>This recording is empty or too large. Please record a shorter dictation.</translation>
    </message>
    <message>
        <source>The answer of the speech service was too large.</source>
        <translation>The answer of the speech service was too large.</translation>
    </message>
    <message>
        <source>The request to the speech service failed ({reason}). Please try again.</source>
        <translation>The request to the speech service failed ({reason}). Please try again.</translation>
    </message>
    <message>
        <source>The request to the speech service could not be made. Check your API key and the service address in Settings.</source>
        <translation>The request to the speech service could not be made. Check your API key and the service address in Settings.</translation>
    </message>
    <message>
        <source>The speech service address is not valid. Enter an address such as https://api.openai.com or leave it empty.</source>
        <translation>The speech service address is not valid. Enter an address such as https://api.openai.com or leave it empty.</translation>
    </message>
    <message>
        <source>A speech service on another computer must be reached over an encrypted connection. Enter an address that begins with https://.</source>
        <translation>A speech service on another computer must be reached over an encrypted connection. Enter an address that begins with https://.</translation>
    </message>
    <message>
        <source>speech service</source>
        <translation>speech service</translation>
    </message>
    <message>
        <source>update server</source>
        <translation>update server</translation>
    </message>
    <message>
        <source>The {server} could not be found. Check your internet connection and try again.</source>
        <translation>The {server} could not be found. Check your internet connection and try again.</translation>
    </message>
    <message>
        <source>The {server} could not be reached. The connection was refused.</source>
        <translation>The {server} could not be reached. The connection was refused.</translation>
    </message>
    <message>
        <source>The {server} could not be reached. Check your internet connection and try again.</source>
        <translation>The {server} could not be reached. Check your internet connection and try again.</translation>
    </message>
    <message>
        <source>The {server} did not answer in time. Please try again.</source>
        <translation>The {server} did not answer in time. Please try again.</translation>
    </message>
    <message>
        <source>The {server} could not be trusted. Its certificate is not valid.</source>
        <translation>The {server} could not be trusted. Its certificate is not valid.</translation>
    </message>
    <message>
        <source>The {server} could not be trusted. The certificates of this computer could not be read.</source>
        <translation>The {server} could not be trusted. The certificates of this computer could not be read.</translation>
    </message>
    <message>
        <source>A secure connection to the {server} could not be made. Please try again.</source>
        <translation>A secure connection to the {server} could not be made. Please try again.</translation>
    </message>
    <message>
        <source>There is not enough memory to reach the {server}.</source>
        <translation>There is not enough memory to reach the {server}.</translation>
    </message>
    <message>
        <source>The connection to the {server} was lost. Please try again.</source>
        <translation>The connection to the {server} was lost. Please try again.</translation>
    </message>
    <message>
        <source>Enter both the recognized phrase and its replacement.</source>
        <translation>Enter both the recognized phrase and its replacement.</translation>
    </message>
    <message>
        <source>That phrase already has a correction. Edit its existing rule instead.</source>
        <translation>That phrase already has a correction. Edit its existing rule instead.</translation>
    </message>
    <message>
        <source>Keep each phrase within 160 characters.</source>
        <translation>Keep each phrase within 160 characters.</translation>
    </message>
    <message>
        <source>A correction has no valid date and could not be saved.</source>
        <translation>A correction has no valid date and could not be saved.</translation>
    </message>
    <message>
        <source>Saved corrections could not be opened. They have been left untouched.</source>
        <translation>Saved corrections could not be opened. They have been left untouched.</translation>
    </message>
    <message>
        <source>Ready to learn from your next dictation.</source>
        <translation>Ready to learn from your next dictation.</translation>
    </message>
    <message>
        <source>Learning in {app}. Correct a spelling, then pause for two seconds.</source>
        <translation>Learning in {app}. Correct a spelling, then pause for two seconds.</translation>
    </message>
    <message>
        <source>Checking automatic learning in {app}…</source>
        <translation>Checking automatic learning in {app}…</translation>
    </message>
    <message>
        <source>Could not verify readable text in {app}. Use Remember correction for this dictation.</source>
        <translation>Could not verify readable text in {app}. Use Remember correction for this dictation.</translation>
    </message>
    <message>
        <source>Could not read the final edit in {app}. Use Remember correction.</source>
        <translation>Could not read the final edit in {app}. Use Remember correction.</translation>
    </message>
    <message>
        <source>The test pasted, but automatic learning could not attach to this editor.</source>
        <translation>The test pasted, but automatic learning could not attach to this editor.</translation>
    </message>
    <message>
        <source>Automatic learning needs a verified paste. Use Remember correction for this copied transcript.</source>
        <translation>Automatic learning needs a verified paste. Use Remember correction for this copied transcript.</translation>
    </message>
    <message>
        <source>The surrounding text changed. Use Remember correction for this edit.</source>
        <translation>The surrounding text changed. Use Remember correction for this edit.</translation>
    </message>
    <message>
        <source>The field was cleared before a correction was saved.</source>
        <translation>The field was cleared before a correction was saved.</translation>
    </message>
    <message>
        <source>No spelling change was detected in the last dictation.</source>
        <translation>No spelling change was detected in the last dictation.</translation>
    </message>
    <message>
        <source>This edit needs a manual rule. Choose Remember correction.</source>
        <translation>This edit needs a manual rule. Choose Remember correction.</translation>
    </message>
    <message>
        <source>Remembered: {rule}</source>
        <translation>Remembered: {rule}</translation>
    </message>
    <message>
        <source>This correction is already saved.</source>
        <translation>This correction is already saved.</translation>
    </message>
    <message>
        <source>An existing rule controls this phrase. Edit or enable it in the list below.</source>
        <translation>An existing rule controls this phrase. Edit or enable it in the list below.</translation>
    </message>
    <message>
        <source>Existing history could not be opened. It has been left untouched; new entries are available for this session only.</source>
        <translation>Existing history could not be opened. It has been left untouched; new entries are available for this session only.</translation>
    </message>
    <message>
        <source>History could not be saved on this Mac. Check available disk space and folder access.</source>
        <translation>History could not be saved on this computer. Check available disk space and folder access.</translation>
    </message>
    <message>
        <source>This history file was created by a newer version of Quorvi.</source>
        <translation>This history file was created by a newer version of Quorvi.</translation>
    </message>
    <message>
        <source>Quorvi will stay closed when you sign in.</source>
        <translation>Quorvi will stay closed when you sign in.</translation>
    </message>
    <message>
        <source>Quorvi will start quietly in the menu bar when you sign in.</source>
        <translation>Quorvi will start quietly in the tray when you sign in.</translation>
    </message>
    <message>
        <source>Allow Quorvi in System Settings → General → Login Items.</source>
        <translation>Quorvi is turned off in your desktop’s startup settings. Turn it on there.</translation>
    </message>
    <message>
        <source>Launch at login is available after Quorvi is installed in Applications.</source>
        <translation>Launch at login is available after Quorvi is installed.</translation>
    </message>
    <message>
        <source>Launch-at-login status is unavailable.</source>
        <translation>Launch-at-login status is unavailable.</translation>
    </message>
    <message>
        <source>Install Quorvi before you have it start when you sign in.</source>
        <translation>Install Quorvi before you have it start when you sign in.</translation>
    </message>
    <message>
        <source>This desktop has no settings for programs that start when you sign in.</source>
        <translation>This desktop has no settings for programs that start when you sign in.</translation>
    </message>
    <message>
        <source>Sync paused on this Mac</source>
        <translation>Sync paused on this computer</translation>
    </message>
    <message>
        <source>Connecting to iCloud…</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>Checking Apple Account…</source>
        <translation>Checking access…</translation>
    </message>
    <message>
        <source>Syncing with iCloud…</source>
        <translation>Syncing…</translation>
    </message>
    <message>
        <source>Up to date with iCloud</source>
        <translation>Up to date</translation>
    </message>
    <message>
        <source>{count} changes waiting to sync</source>
        <translation>{count} changes waiting to sync</translation>
    </message>
    <message>
        <source>Sign in to iCloud in System Settings to sync.</source>
        <translation>Sync has no access. Choose a folder, or check the server’s address and store its password.</translation>
    </message>
    <message>
        <source>Sync is unavailable. Your changes are saved on this Mac.</source>
        <translation>Sync is unavailable. Your changes are saved on this computer.</translation>
    </message>
    <message>
        <source>Offline — changes will sync when you reconnect.</source>
        <translation>Offline — changes will sync when you reconnect.</translation>
    </message>
    <message>
        <source>iCloud access is unavailable for this build ({code}).</source>
        <translation>Sync has no access ({code}). Check the address of the folder or server, and your rights there.</translation>
    </message>
    <message>
        <source>iCloud storage is full. Your changes are saved on this Mac.</source>
        <translation>The shared folder or server is full. Your changes are saved on this computer.</translation>
    </message>
    <message>
        <source>iCloud will retry. Your changes are saved on this Mac ({code}).</source>
        <translation>Sync will retry. Your changes are saved on this computer ({code}).</translation>
    </message>
    <message>
        <source>Sync data could not be read. Your local data is untouched.</source>
        <translation>Sync data could not be read. Your local data is untouched.</translation>
    </message>
    <message>
        <source>Sync paused: changes could not be saved to this Mac. Check disk space and restart Quorvi.</source>
        <translation>Sync paused: changes could not be saved to this computer. Check disk space and restart Quorvi.</translation>
    </message>
    <message>
        <source>Sync paused: iCloud data was reset. Local data has been preserved.</source>
        <translation>Sync paused: the shared data was reset. Local data has been preserved.</translation>
    </message>
    <message>
        <source>Sync paused: sign back into the original Apple Account. Data from different accounts stays separate.</source>
        <translation>Sync paused: this folder or server now belongs to another account. Go back to the original one. Data from different accounts stays separate.</translation>
    </message>
    <message>
        <source>Sync paused: the original Apple Account is unavailable.</source>
        <translation>Sync paused: the original folder or account is unavailable.</translation>
    </message>
    <message>
        <source>cloudDatabase: {address} is no address that is known</source>
        <translation>cloudDatabase: {address} is no address that is known</translation>
    </message>
    <message>
        <source>cloudDatabase: {address} has no absolute path</source>
        <translation>cloudDatabase: {address} has no absolute path</translation>
    </message>
    <message>
        <source>The address of a PostgreSQL database begins with postgresql://</source>
        <translation>The address of a PostgreSQL database begins with postgresql://</translation>
    </message>
    <message>
        <source>The database address can&apos;t be understood.</source>
        <translation>The database address can&apos;t be understood.</translation>
    </message>
    <message>
        <source>The database address must not contain a password. Keep it in the keyring or in ~/.pgpass.</source>
        <translation>The database address must not contain a password. Keep it in the keyring or in ~/.pgpass.</translation>
    </message>
    <message>
        <source>Preferences could not be opened. They have been left untouched; changes last for this session only.</source>
        <translation>Preferences could not be opened. They have been left untouched; changes last for this session only.</translation>
    </message>
    <message>
        <source>Preferences could not be saved on this computer. Check available disk space and folder access.</source>
        <translation>Preferences could not be saved on this computer. Check available disk space and folder access.</translation>
    </message>
    <message>
        <source>The history could not be read ({reason})</source>
        <translation>The history could not be read ({reason})</translation>
    </message>
    <message>
        <source>The history could not be written; nothing was changed ({reason})</source>
        <translation>The history could not be written; nothing was changed ({reason})</translation>
    </message>
    <message>
        <source>What the synchronisation has kept could not be read ({reason})</source>
        <translation>What the synchronisation has kept could not be read ({reason})</translation>
    </message>
    <message>
        <source>This file is no export of Quorvi: {reason}.</source>
        <translation>This file is no export of Quorvi: {reason}.</translation>
    </message>
    <message>
        <source>This export was written by a newer version of Quorvi.</source>
        <translation>This export was written by a newer version of Quorvi.</translation>
    </message>
    <message>
        <source>Updates aren&apos;t configured in this build.</source>
        <translation>Updates aren&apos;t configured in this build.</translation>
    </message>
    <message>
        <source>Quorvi {version} is the newest version.</source>
        <translation>Quorvi {version} is the newest version.</translation>
    </message>
    <message>
        <source>Quorvi {version} is available, but it needs version {system} of your system or a later one.</source>
        <translation>Quorvi {version} is available, but it needs version {system} of your system or a later one.</translation>
    </message>
    <message>
        <source>The system&apos;s installer has Quorvi {version}. When it is done, quit Quorvi and start it again.</source>
        <translation>The system&apos;s installer has Quorvi {version}. When it is done, quit Quorvi and start it again.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: its address is not a secure one (https).</source>
        <translation>Quorvi {version} can&apos;t be downloaded: its address is not a secure one (https).</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: it is not signed.</source>
        <translation>Quorvi {version} can&apos;t be downloaded: it is not signed.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: the update feed doesn&apos;t say how large it is.</source>
        <translation>Quorvi {version} can&apos;t be downloaded: the update feed doesn&apos;t say how large it is.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: it is too large.</source>
        <translation>Quorvi {version} can&apos;t be downloaded: it is too large.</translation>
    </message>
    <message>
        <source>The folder for updates could not be created: {reason}.</source>
        <translation>The folder for updates could not be created: {reason}.</translation>
    </message>
    <message>
        <source>The update could not be read from the disk.</source>
        <translation>The update could not be read from the disk.</translation>
    </message>
    <message>
        <source>The update could not be saved: {reason}.</source>
        <translation>The update could not be saved: {reason}.</translation>
    </message>
    <message>
        <source>The update could not be read. It is not a Debian package.</source>
        <translation>The update could not be read. It is not a Debian package.</translation>
    </message>
    <message>
        <source>The update was refused. Its package is not Quorvi&apos;s.</source>
        <translation>The update was refused. Its package is not Quorvi&apos;s.</translation>
    </message>
    <message>
        <source>The update was refused. It calls itself Quorvi {version} but is not newer than the Quorvi that is running.</source>
        <translation>The update was refused. It calls itself Quorvi {version} but is not newer than the Quorvi that is running.</translation>
    </message>
    <message>
        <source>Quorvi {version} was refused. Its signature is not valid.</source>
        <translation>Quorvi {version} was refused. Its signature is not valid.</translation>
    </message>
    <message>
        <source>This desktop has no program that installs packages. Install it with: sudo apt install {package}</source>
        <translation>This desktop has no program that installs packages. Install it with: sudo apt install {package}</translation>
    </message>
    <message>
        <source>The package installer could not be started. Install it with: sudo apt install {package}</source>
        <translation>The package installer could not be started. Install it with: sudo apt install {package}</translation>
    </message>
    <message>
        <source>There is not enough memory to look for updates.</source>
        <translation>There is not enough memory to look for updates.</translation>
    </message>
    <message>
        <source>The update server could not be used ({reason}).</source>
        <translation>The update server could not be used ({reason}).</translation>
    </message>
    <message>
        <source>The update server redirects to a connection that is not secure.</source>
        <translation>The update server redirects to a connection that is not secure.</translation>
    </message>
    <message>
        <source>The update server&apos;s address is not a secure one (https).</source>
        <translation>The update server&apos;s address is not a secure one (https).</translation>
    </message>
    <message>
        <source>The update server redirects without end.</source>
        <translation>The update server redirects without end.</translation>
    </message>
    <message>
        <source>The update server answered with an error (HTTP {status}). Please try again later.</source>
        <translation>The update server answered with an error (HTTP {status}). Please try again later.</translation>
    </message>
    <message>
        <source>The update server answered with something else than asked for (HTTP {status}). Please try again later.</source>
        <translation>The update server answered with something else than asked for (HTTP {status}). Please try again later.</translation>
    </message>
    <message>
        <source>The download is larger than the update feed says. It was refused.</source>
        <translation>The download is larger than the update feed says. It was refused.</translation>
    </message>
    <message>
        <source>The download is smaller than the update feed says. It was refused.</source>
        <translation>The download is smaller than the update feed says. It was refused.</translation>
    </message>
    <message>
        <source>The answer of the update server was too large.</source>
        <translation>The answer of the update server was too large.</translation>
    </message>
    <message>
        <source>There is not enough memory to read the update feed.</source>
        <translation>There is not enough memory to read the update feed.</translation>
    </message>
    <message>
        <source>The update feed could not be read. It is not a feed of releases.</source>
        <translation>The update feed could not be read. It is not a feed of releases.</translation>
    </message>
    <message>
        <source>The update feed was refused. It declares a document type, which a feed has no use for.</source>
        <translation>The update feed was refused. It declares a document type, which a feed has no use for.</translation>
    </message>
    <message>
        <source>The update feed was refused. It is nested too deeply.</source>
        <translation>The update feed was refused. It is nested too deeply.</translation>
    </message>
    <message>
        <source>The update feed was refused. It has too many entries.</source>
        <translation>The update feed was refused. It has too many entries.</translation>
    </message>
    <message>
        <source>The update feed was refused. It is too large.</source>
        <translation>The update feed was refused. It is too large.</translation>
    </message>
    <message>
        <source>&lt;p&gt;The release notes could not be loaded.&lt;/p&gt;</source>
        <translation>&lt;p&gt;The release notes could not be loaded.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Your keyring is locked. Unlock it, then dictate again.</source>
        <translation>Your keyring is locked. Unlock it, then dictate again.</translation>
    </message>
    <message>
        <source>Your keyring stayed locked, and with it your API key. Dictate again to unlock it.</source>
        <translation>Your keyring stayed locked, and with it your API key. Dictate again to unlock it.</translation>
    </message>
    <message>
        <source>Enter the address of your speech service in Settings.</source>
        <translation>Enter the address of your speech service in Settings.</translation>
    </message>
    <message>
        <source>The offline recogniser is not installed. Install the package quorvi-speech-service.</source>
        <translation>The offline recogniser is not installed. Install the package quorvi-speech-service.</translation>
    </message>
    <message>
        <source>The offline recogniser did not start. Try again, or choose another speech service in Settings.</source>
        <translation>The offline recogniser did not start. Try again, or choose another speech service in Settings.</translation>
    </message>
    <message>
        <source>The speech service answered. It is ready for your dictations.</source>
        <translation>The speech service answered. It is ready for your dictations.</translation>
    </message>
    <message>
        <source>Your microphone is missing · {microphone}</source>
        <translation>Your microphone is missing · {microphone}</translation>
    </message>
    <message>
        <source>You can try again for {minutes} minutes.</source>
        <translation>You can try again for {minutes} minutes.</translation>
    </message>
    <message>
        <source>You can try again for one more minute.</source>
        <translation>You can try again for one more minute.</translation>
    </message>
    <message>
        <source>There is no recording to try again.</source>
        <translation>There is no recording to try again.</translation>
    </message>
    <message>
        <source>The recording was discarded.</source>
        <translation>The recording was discarded.</translation>
    </message>
    <message>
        <source>Text sent to {app}.</source>
        <translation>Text sent to {app}.</translation>
    </message>
    <message>
        <source>This desktop reports no lone modifiers; choose a combination.</source>
        <translation>This desktop reports no lone modifiers; choose a combination.</translation>
    </message>
    <message>
        <source>This desktop does not report when a key goes up: press the shortcut once to speak, and again to insert the text.</source>
        <translation>This desktop does not report when a key goes up: press the shortcut once to speak, and again to insert the text.</translation>
    </message>
    <message>
        <source>The desktop uses this shortcut for “{use}”. Choose another one.</source>
        <translation>The desktop uses this shortcut for “{use}”. Choose another one.</translation>
    </message>
    <message>
        <source>Let Quorvi add the shortcut to the desktop&apos;s settings.</source>
        <translation>Let Quorvi add the shortcut to the desktop&apos;s settings.</translation>
    </message>
    <message>
        <source>The desktop has not given the shortcut to Quorvi. Choose another one, or allow it in the desktop&apos;s settings.</source>
        <translation>The desktop has not given the shortcut to Quorvi. Choose another one, or allow it in the desktop&apos;s settings.</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Shortcut</translation>
    </message>
    <message>
        <source>Text into fields</source>
        <translation>Text into fields</translation>
    </message>
    <message>
        <source>Pasting</source>
        <translation>Pasting</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>Clipboard</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Windows</translation>
    </message>
    <message>
        <source>Indicator</source>
        <translation>Indicator</translation>
    </message>
    <message>
        <source>By {interface}.</source>
        <translation>By {interface}.</translation>
    </message>
    <message>
        <source>Not offered by this desktop: {interfaces}.</source>
        <translation>Not offered by this desktop: {interfaces}.</translation>
    </message>
    <message>
        <source>Bind a key of the desktop to “quorvi toggle”.</source>
        <translation>Bind a key of the desktop to “quorvi toggle”.</translation>
    </message>
    <message>
        <source>Quorvi pastes instead.</source>
        <translation>Quorvi pastes instead.</translation>
    </message>
    <message>
        <source>Where a field takes no text directly, Quorvi leaves it on the clipboard; paste it yourself.</source>
        <translation>Where a field takes no text directly, Quorvi leaves it on the clipboard; paste it yourself.</translation>
    </message>
    <message>
        <source>Quorvi uses that of X11 programs.</source>
        <translation>Quorvi uses that of X11 programs.</translation>
    </message>
    <message>
        <source>It is shown by X11, if the desktop runs X11 programs.</source>
        <translation>It is shown by X11, if the desktop runs X11 programs.</translation>
    </message>
    <message>
        <source>This desktop lacks some of what Quorvi needs: it works only in windows of X11 programs. It works in all windows on sway, KDE Plasma and GNOME, and on desktops with X11.</source>
        <translation>This desktop lacks some of what Quorvi needs: it works only in windows of X11 programs. It works in all windows on sway, KDE Plasma and GNOME, and on desktops with X11.</translation>
    </message>
    <message>
        <source>This desktop has no shortcuts for programs. In its settings or configuration, bind a key to the command “quorvi toggle”, and another to “quorvi cancel”.</source>
        <translation>This desktop has no shortcuts for programs. In its settings or configuration, bind a key to the command “quorvi toggle”, and another to “quorvi cancel”.</translation>
    </message>
    <message>
        <source>Quorvi presses no keys here until you allow it: “Press keys to paste” in Settings, under “This desktop”.</source>
        <translation>Quorvi presses no keys here until you allow it: “Press keys to paste” in Settings, under “This desktop”.</translation>
    </message>
</context>
<context>
    <name>PrivacySettings</name>
    <message>
        <source>Privacy</source>
        <translation>Privacy</translation>
    </message>
    <message>
        <source>Audio uses your Mac’s default input. Dictations stop at 3 minutes. Local audio files are deleted after recording; retained text history and usage statistics sync through your private iCloud account when enabled. Configure retention above. Cloud processing follows your API account’s data settings.</source>
        <translation>Audio comes from the microphone that is set above. Dictations stop at 3 minutes. Local audio files are deleted after recording; retained text history and usage statistics sync through your own folder or server when enabled. Configure retention above. Cloud processing follows your API account’s data settings.</translation>
    </message>
    <message>
        <source>When Quorvi uses Paste, it briefly places the transcript on the clipboard and then restores it. Clipboard managers may retain a copy.</source>
        <translation>When Quorvi uses Paste, it briefly places the transcript on the clipboard and then restores it. Clipboard managers may retain a copy.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Microphone</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Accessibility bus</translation>
    </message>
    <message>
        <source>Manage</source>
        <translation>Manage</translation>
    </message>
    <message>
        <source>Manage %1</source>
        <translation>Manage %1</translation>
    </message>
    <message>
        <source>%1: allowed</source>
        <translation>%1: allowed</translation>
    </message>
    <message>
        <source>%1: not allowed</source>
        <translation>%1: not allowed</translation>
    </message>
    <message>
        <source>Keep a failed recording in memory for ten minutes</source>
        <translation>Keep a failed recording in memory for ten minutes</translation>
    </message>
    <message>
        <source>If the speech service or the network fails, you can try again instead of dictating anew. The recording is never written to a disk, and gone when the screen is locked.</source>
        <translation>If the speech service or the network fails, you can try again instead of dictating anew. The recording is never written to a disk, and gone when the screen is locked.</translation>
    </message>
</context>
<context>
    <name>RecognitionSettings</name>
    <message>
        <source>Recognition</source>
        <translation>Recognition</translation>
    </message>
    <message>
        <source>Language is detected automatically. Speak naturally in any supported language; your words stay in their original language.</source>
        <translation>Language is detected automatically. Speak naturally in any supported language; your words stay in their original language.</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>Recognition accuracy varies with the recording and model.</source>
        <translation>Recognition accuracy varies with the recording and model.</translation>
    </message>
    <message>
        <source>Names or terms you often use (optional)</source>
        <translation>Names or terms you often use (optional)</translation>
    </message>
</context>
<context>
    <name>RecordingAppearanceSettings</name>
    <message>
        <source>Style</source>
        <translation>Style</translation>
    </message>
    <message>
        <source>Preview · microphone off</source>
        <translation>Preview · microphone off</translation>
    </message>
    <message>
        <source>Dictating into Text Editor</source>
        <translation>Dictating into Text Editor</translation>
    </message>
</context>
<context>
    <name>RecordingHUD</name>
    <message>
        <source>Esc to cancel</source>
        <translation>Esc to cancel</translation>
    </message>
    <message>
        <source>Quorvi dictation</source>
        <translation>Quorvi dictation</translation>
    </message>
    <message>
        <source>Recording time</source>
        <translation>Recording time</translation>
    </message>
    <message>
        <source>Copy transcript</source>
        <translation>Copy transcript</translation>
    </message>
    <message numerus="yes">
        <source>%1 seconds</source>
        <translation>
            <numerusform>%1 second</numerusform>
            <numerusform>%1 seconds</numerusform>
        </translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Update %1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
</context>
<context>
    <name>RecordingPanel</name>
    <message>
        <source>Quorvi dictation</source>
        <translation>Quorvi dictation</translation>
    </message>
</context>
<context>
    <name>RememberCorrectionButton</name>
    <message>
        <source>Remember correction</source>
        <translation>Remember correction</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>SET UP YOUR FLOW</source>
        <translation>SET UP YOUR FLOW</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Recording appearance</source>
        <translation>Recording appearance</translation>
    </message>
    <message>
        <source>Search settings</source>
        <translation>Search settings</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Clear search</translation>
    </message>
    <message>
        <source>No setting matches.</source>
        <translation>No setting matches.</translation>
    </message>
    <message numerus="yes">
        <source>%n sections match. Enter goes to the next match.</source>
        <translation>
            <numerusform>%n section matches. Enter goes to the next match.</numerusform>
            <numerusform>%n sections match. Enter goes to the next match.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SetupCard</name>
    <message>
        <source>Make it yours</source>
        <translation>Make it yours</translation>
    </message>
    <message>
        <source>ONE-TIME SETUP</source>
        <translation>ONE-TIME SETUP</translation>
    </message>
    <message>
        <source>SET UP YOUR FLOW</source>
        <translation>SET UP YOUR FLOW</translation>
    </message>
    <message>
        <source>OpenAI API key</source>
        <translation>OpenAI API key</translation>
    </message>
    <message>
        <source>Stored securely in your Mac’s Keychain</source>
        <translation>Stored securely in your keyring</translation>
    </message>
    <message>
        <source>Add key</source>
        <translation>Add key</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Microphone</translation>
    </message>
    <message>
        <source>Record only while you dictate</source>
        <translation>Record only while you dictate</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Enable</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Accessibility</translation>
    </message>
    <message>
        <source>Use your shortcut and insert text</source>
        <translation>The accessibility bus tells Quorvi which text field you write in</translation>
    </message>
    <message>
        <source>Enable keyboard access in Input Monitoring</source>
        <translation>Keyboard access</translation>
    </message>
    <message>
        <source>If access is already enabled, quit and reopen Quorvi.</source>
        <translation>Your shortcut needs accessibility and an X11 display. If this stays, “quorvi doctor” in a terminal says why.</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>Use the offline recogniser</source>
        <translation>Use the offline recogniser</translation>
    </message>
    <message>
        <source>Speech service</source>
        <translation>Speech service</translation>
    </message>
    <message>
        <source>Offline on this computer, where no key is needed</source>
        <translation>Offline on this computer, where no key is needed</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Open Settings</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Shortcut</translation>
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
        <translation>Ctrl</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Backspace</translation>
    </message>
    <message>
        <source>Enter (keypad)</source>
        <translation>Enter (keypad)</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Page Up</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>End</source>
        <translation>End</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Page Down</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>Right Alt (AltGr)</source>
        <translation>Right Alt (AltGr)</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>Dictation</source>
        <translation>Dictation</translation>
    </message>
    <message>
        <source>History</source>
        <translation>History</translation>
    </message>
    <message>
        <source>Insights</source>
        <translation>Insights</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Your voice, in your words.</source>
        <translation>Your voice, in your words.</translation>
    </message>
    <message>
        <source>Automatic language</source>
        <translation>Automatic language</translation>
    </message>
    <message>
        <source>Quorvi %1 · Native for Mac</source>
        <translation>Quorvi %1 · Native for Linux</translation>
    </message>
    <message>
        <source>Sections</source>
        <translation>Sections</translation>
    </message>
    <message>
        <source>Section: %1</source>
        <translation>Section: %1</translation>
    </message>
</context>
<context>
    <name>SpeechServiceSettings</name>
    <message>
        <source>Speech service</source>
        <translation>Speech service</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>OpenAI</source>
        <translation>OpenAI</translation>
    </message>
    <message>
        <source>Another service</source>
        <translation>Another service</translation>
    </message>
    <message>
        <source>Offline (English)</source>
        <translation>Offline (English)</translation>
    </message>
    <message>
        <source>Turns speech into text</source>
        <translation>Turns speech into text</translation>
    </message>
    <message>
        <source>Test the speech service</source>
        <translation>Test the speech service</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Cancel the test</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>Model (optional)</source>
        <translation>Model (optional)</translation>
    </message>
    <message>
        <source>As the service calls it</source>
        <translation>As the service calls it</translation>
    </message>
    <message>
        <source>The service needs an API key</source>
        <translation>The service needs an API key</translation>
    </message>
    <message>
        <source>The environment variable QUORVI_SERVICE sets it to %1 until Quorvi is started without that variable.</source>
        <translation>The environment variable QUORVI_SERVICE sets it to %1 until Quorvi is started without that variable.</translation>
    </message>
    <message>
        <source>Recordings go to api.openai.com with your API key.</source>
        <translation>Recordings go to api.openai.com with your API key.</translation>
    </message>
    <message>
        <source>A service with the interface of OpenAI&apos;s speech-to-text API: your own server, or that of another provider. Its key is kept apart from the others.</source>
        <translation>A service with the interface of OpenAI&apos;s speech-to-text API: your own server, or that of another provider. Its key is kept apart from the others.</translation>
    </message>
    <message>
        <source>Recordings stay on this computer, and no key is needed. English only, and good for short sentences. The recogniser runs while you dictate and five minutes longer.</source>
        <translation>Recordings stay on this computer, and no key is needed. English only, and good for short sentences. The recogniser runs while you dictate and five minutes longer.</translation>
    </message>
    <message>
        <source>Waiting for the service…</source>
        <translation>Waiting for the service…</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>In progress</source>
        <translation>In progress</translation>
    </message>
</context>
<context>
    <name>StatusCard</name>
    <message>
        <source>Automatic language detection</source>
        <translation>Automatic language detection</translation>
    </message>
    <message>
        <source>Click a text field in any app, then use your shortcut. You can close this window; Quorvi keeps running in the menu bar.</source>
        <translation>Click a text field in any app, then use your shortcut. You can close this window; Quorvi keeps running in the tray.</translation>
    </message>
    <message>
        <source>Recording time</source>
        <translation>Recording time</translation>
    </message>
    <message>
        <source>Stop &amp;&amp; insert</source>
        <translation>Stop &amp;&amp; insert</translation>
    </message>
    <message>
        <source>Stop &amp; insert</source>
        <translation>Stop &amp; insert</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Change shortcut</source>
        <translation>Change shortcut</translation>
    </message>
    <message>
        <source>Keep the shortcut</source>
        <translation>Keep the shortcut</translation>
    </message>
    <message>
        <source>Click a text field in another app during the 10-second countdown. Quorvi will paste a short sample without recording or an API request.</source>
        <translation>Click a text field in another app during the 10-second countdown. Quorvi will paste a short sample without recording or an API request.</translation>
    </message>
    <message>
        <source>Test paste</source>
        <translation>Test paste</translation>
    </message>
    <message>
        <source>Cancel test</source>
        <translation>Cancel test</translation>
    </message>
    <message>
        <source>Ready when you are</source>
        <translation>Ready when you are</translation>
    </message>
    <message>
        <source>Complete setup to start</source>
        <translation>Complete setup to start</translation>
    </message>
    <message>
        <source>Press the new shortcut. Esc keeps %1.</source>
        <translation>Press the new shortcut. Esc keeps %1.</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Shortcut: %1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>Discard the recording</source>
        <translation>Discard the recording</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Quorvi — multilingual dictation</source>
        <translation>Quorvi — multilingual dictation</translation>
    </message>
    <message>
        <source>Stop &amp; insert</source>
        <translation>Stop &amp; insert</translation>
    </message>
    <message>
        <source>Cancel dictation</source>
        <translation>Cancel dictation</translation>
    </message>
    <message>
        <source>Open Quorvi…</source>
        <translation>Open Quorvi…</translation>
    </message>
    <message>
        <source>History…</source>
        <translation>History…</translation>
    </message>
    <message>
        <source>Insights…</source>
        <translation>Insights…</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Settings…</translation>
    </message>
    <message>
        <source>Copy last transcript</source>
        <translation>Copy last transcript</translation>
    </message>
    <message>
        <source>Restore my clipboard</source>
        <translation>Restore my clipboard</translation>
    </message>
    <message>
        <source>Reset dictation</source>
        <translation>Reset dictation</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Check for Updates…</translation>
    </message>
    <message>
        <source>Quit Quorvi</source>
        <translation>Quit Quorvi</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
</context>
<context>
    <name>TranscriptCard</name>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Last transcript</source>
        <translation>Last transcript</translation>
    </message>
    <message>
        <source>Clear transcript</source>
        <translation>Clear transcript</translation>
    </message>
    <message>
        <source>This copy stays until Quorvi quits. Saved dictations are in History.</source>
        <translation>This copy stays until Quorvi quits. Saved dictations are in History.</translation>
    </message>
</context>
<context>
    <name>TrayNotice</name>
    <message>
        <source>This desktop shows no tray icons. Quorvi keeps running when you close this window; start it again to come back here.</source>
        <translation>This desktop shows no tray icons. Quorvi keeps running when you close this window; start it again to come back here.</translation>
    </message>
    <message>
        <source>Quit Quorvi</source>
        <translation>Quit Quorvi</translation>
    </message>
</context>
<context>
    <name>TryItCard</name>
    <message>
        <source>Try it here</source>
        <translation>Try it here</translation>
    </message>
    <message>
        <source>CLICK BELOW, THEN DICTATE</source>
        <translation>CLICK BELOW, THEN DICTATE</translation>
    </message>
    <message>
        <source>Dictation test field</source>
        <translation>Dictation test field</translation>
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
        <translation>App updates</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>Automatically check for updates</translation>
    </message>
    <message>
        <source>New releases are downloaded securely. Quorvi will ask before installing and relaunching.</source>
        <translation>New releases are downloaded securely. Quorvi will ask before installing and relaunching.</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Check for Updates…</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Quorvi Updates</source>
        <translation>Quorvi Updates</translation>
    </message>
    <message>
        <source>Release notes</source>
        <translation>Release notes</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Later</translation>
    </message>
    <message>
        <source>Install…</source>
        <translation>Install…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>Verifying its signature…</source>
        <translation>Verifying its signature…</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Checking for updates…</translation>
    </message>
    <message>
        <source>No update available</source>
        <translation>No update available</translation>
    </message>
    <message>
        <source>Quorvi %1 is available</source>
        <translation>Quorvi %1 is available</translation>
    </message>
    <message>
        <source>Downloading Quorvi %1…</source>
        <translation>Downloading Quorvi %1…</translation>
    </message>
    <message>
        <source>Quorvi %1 is ready to install</source>
        <translation>Quorvi %1 is ready to install</translation>
    </message>
    <message>
        <source>Opening the installer…</source>
        <translation>Opening the installer…</translation>
    </message>
    <message>
        <source>The installer is open</source>
        <translation>The installer is open</translation>
    </message>
    <message>
        <source>Quorvi %1 was not installed</source>
        <translation>Quorvi %1 was not installed</translation>
    </message>
    <message>
        <source>Can&apos;t look for updates</source>
        <translation>Can&apos;t look for updates</translation>
    </message>
    <message>
        <source>You have Quorvi %1.</source>
        <translation>You have Quorvi %1.</translation>
    </message>
    <message>
        <source>Its signature has been verified. Your system&apos;s package installer will open, and may ask for your password.</source>
        <translation>Its signature has been verified. Your system&apos;s package installer will open, and may ask for your password.</translation>
    </message>
</context>
<context>
    <name>UsageCostSection</name>
    <message>
        <source>No completed dictations in this period.</source>
        <translation>No completed dictations in this period.</translation>
    </message>
    <message>
        <source>Estimated API cost</source>
        <translation>Estimated API cost</translation>
    </message>
    <message>
        <source>OpenAI pricing ↗</source>
        <translation>OpenAI pricing ↗</translation>
    </message>
    <message>
        <source>Cost period</source>
        <translation>Cost period</translation>
    </message>
    <message>
        <source>Estimate before tax for completed dictations in your Quorvi history, including synced Macs. Deleted dictations, failed or cancelled requests, and usage in other apps are excluded. Actual charges may differ.</source>
        <translation>Estimate before tax for completed dictations in your Quorvi history, including synced computers. Deleted dictations, failed or cancelled requests, and usage in other apps are excluded. Actual charges may differ.</translation>
    </message>
</context>
</TS>
