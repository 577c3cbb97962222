<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="el" sourcelanguage="en">
<context>
    <name>AccountSyncSettings</name>
    <message>
        <source>Account &amp; sync</source>
        <translation>Λογαριασμός και συγχρονισμός</translation>
    </message>
    <message>
        <source>Sync with my Apple Account</source>
        <translation>Συγχρονισμός με τους άλλους υπολογιστές μου</translation>
    </message>
    <message>
        <source>Sync now</source>
        <translation>Συγχρονισμός τώρα</translation>
    </message>
    <message>
        <source>Settings, corrections, retained history and usage sync privately between Macs signed into the same iCloud account. Offline changes are saved and sent when you reconnect.</source>
        <translation>Οι ρυθμίσεις, οι διορθώσεις, το ιστορικό που διατηρείται και η χρήση συγχρονίζονται ιδιωτικά μεταξύ των υπολογιστών σου, μέσω δικού σου φακέλου ή διακομιστή. Οι αλλαγές χωρίς σύνδεση αποθηκεύονται και στέλνονται όταν συνδεθείς ξανά.</translation>
    </message>
    <message>
        <source>Microphone and Accessibility permissions must be granted separately on each Mac. Audio recordings are never synced.</source>
        <translation>Το μικρόφωνο και η προσβασιμότητα ρυθμίζονται χωριστά σε κάθε υπολογιστή. Οι ηχογραφήσεις δεν συγχρονίζονται ποτέ.</translation>
    </message>
    <message>
        <source>Last synced %1 · %2 pending</source>
        <translation>Τελευταίος συγχρονισμός: %1 · %2 σε αναμονή</translation>
    </message>
    <message>
        <source>Shared folder: %1</source>
        <translation>Κοινόχρηστος φάκελος: %1</translation>
    </message>
    <message>
        <source>Server: %1</source>
        <translation>Διακομιστής: %1</translation>
    </message>
    <message>
        <source>Quorvi&apos;s own folder can&apos;t be used. Check disk space and folder access.</source>
        <translation>Ο δικός του φάκελος του Quorvi δεν μπορεί να χρησιμοποιηθεί. Έλεγξε τον χώρο στον δίσκο και την πρόσβαση στον φάκελο.</translation>
    </message>
    <message>
        <source>The shared folder can&apos;t be used. Check that it exists and that you may write to it, or choose another folder.</source>
        <translation>Ο κοινόχρηστος φάκελος δεν μπορεί να χρησιμοποιηθεί. Έλεγξε αν υπάρχει και αν μπορείς να γράψεις σε αυτόν, ή διάλεξε άλλον φάκελο.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Έλεγχος</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
    <message>
        <source>Check where the data are shared</source>
        <translation>Έλεγχος του τόπου κοινής χρήσης</translation>
    </message>
    <message>
        <source>Cancel the check</source>
        <translation>Ακύρωση του ελέγχου</translation>
    </message>
    <message>
        <source>The server does not let you in. Check its address and the user, and enter the password again.</source>
        <translation>Ο διακομιστής δεν σου επιτρέπει την είσοδο. Έλεγξε τη διεύθυνσή του και τον χρήστη, και δώσε ξανά τον κωδικό πρόσβασης.</translation>
    </message>
    <message>
        <source>Writing something and reading it back…</source>
        <translation>Γίνεται δοκιμαστική εγγραφή και ανάγνωση…</translation>
    </message>
    <message>
        <source>It works: data can be written and read back.</source>
        <translation>Λειτουργεί: τα δεδομένα γράφονται και διαβάζονται.</translation>
    </message>
</context>
<context>
    <name>ApiKeySettings</name>
    <message>
        <source>OpenAI API key</source>
        <translation>Κλειδί API του OpenAI</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Αποθηκεύτηκε</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Αποθήκευση</translation>
    </message>
    <message>
        <source>Get an API key ↗</source>
        <translation>Απόκτησε κλειδί API ↗</translation>
    </message>
    <message>
        <source>Remove key</source>
        <translation>Αφαίρεση κλειδιού</translation>
    </message>
    <message>
        <source>Sync API key through iCloud Keychain</source>
        <translation>Σήμανση του κλειδιού API στην κλειδοθήκη για συγχρονισμό</translation>
    </message>
    <message>
        <source>Your key stays in macOS Keychain. Recordings go directly to OpenAI for transcription. API usage is billed to your OpenAI account.</source>
        <translation>Το κλειδί σου μένει στην κλειδοθήκη σου. Οι ηχογραφήσεις πηγαίνουν απευθείας στο OpenAI για μεταγραφή. Η χρήση του API χρεώνεται στον λογαριασμό σου στο OpenAI.</translation>
    </message>
    <message>
        <source>Enter a replacement key</source>
        <translation>Πληκτρολόγησε νέο κλειδί</translation>
    </message>
    <message>
        <source>Paste your API key</source>
        <translation>Επικόλλησε το κλειδί API</translation>
    </message>
    <message>
        <source>API key</source>
        <translation>Κλειδί API</translation>
    </message>
    <message>
        <source>The key for %1. It stays in your keyring and is sent nowhere else.</source>
        <translation>Το κλειδί για το %1. Μένει στην κλειδοθήκη σου και δεν στέλνεται πουθενά αλλού.</translation>
    </message>
    <message>
        <source>The environment variable QUORVI_API_KEY gives the key until Quorvi is started without that variable. What you change here counts until Quorvi ends; the key in your keyring stays as it is.</source>
        <translation>Η μεταβλητή περιβάλλοντος QUORVI_API_KEY ορίζει το κλειδί, μέχρι να ξεκινήσει το Quorvi χωρίς αυτήν. Ό,τι αλλάξεις εδώ ισχύει μέχρι να τερματιστεί το Quorvi· το κλειδί στην κλειδοθήκη σου μένει όπως είναι.</translation>
    </message>
</context>
<context>
    <name>AppWindow</name>
    <message>
        <source>Quorvi is running</source>
        <translation>Το Quorvi εκτελείται</translation>
    </message>
    <message>
        <source>This desktop shows no tray icons. Start Quorvi again to open its window.</source>
        <translation>Αυτή η επιφάνεια εργασίας δεν δείχνει εικονίδια. Ξεκίνα ξανά το Quorvi για να ανοίξει το παράθυρό του.</translation>
    </message>
</context>
<context>
    <name>CloudComputersList</name>
    <message>
        <source>Rename</source>
        <translation>Μετονομασία</translation>
    </message>
    <message>
        <source>Computers that share this folder</source>
        <translation>Υπολογιστές που μοιράζονται αυτόν τον φάκελο</translation>
    </message>
    <message>
        <source>Name of this computer</source>
        <translation>Όνομα αυτού του υπολογιστή</translation>
    </message>
    <message>
        <source>Rename this computer</source>
        <translation>Μετονομασία αυτού του υπολογιστή</translation>
    </message>
    <message>
        <source>%1 (this computer)</source>
        <translation>%1 (αυτός ο υπολογιστής)</translation>
    </message>
    <message>
        <source>Last change %1</source>
        <translation>Τελευταία αλλαγή %1</translation>
    </message>
    <message>
        <source>Remove…</source>
        <translation>Αφαίρεση…</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Αφαίρεση: %1</translation>
    </message>
    <message>
        <source>Remove %1?</source>
        <translation>Να αφαιρεθεί ο υπολογιστής %1;</translation>
    </message>
    <message>
        <source>Only for a computer that you no longer have or that no longer uses this folder: its files are deleted. Nothing that only it had is lost.</source>
        <translation>Μόνο για υπολογιστή που δεν έχεις πια ή που δεν χρησιμοποιεί πια αυτόν τον φάκελο: τα αρχεία του διαγράφονται. Ό,τι είχε μόνο αυτός δεν χάνεται.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Αφαίρεση</translation>
    </message>
</context>
<context>
    <name>CloudPlaceSettings</name>
    <message>
        <source>Where your computers share the data</source>
        <translation>Πού μοιράζονται τα δεδομένα οι υπολογιστές σου</translation>
    </message>
    <message>
        <source>Only this computer</source>
        <translation>Μόνο αυτός ο υπολογιστής</translation>
    </message>
    <message>
        <source>A shared folder</source>
        <translation>Ένας κοινόχρηστος φάκελος</translation>
    </message>
    <message>
        <source>A PostgreSQL server</source>
        <translation>Ένας διακομιστής PostgreSQL</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>Αναζήτηση…</translation>
    </message>
    <message>
        <source>Browse for the folder</source>
        <translation>Αναζήτηση του φακέλου</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Φάκελος</translation>
    </message>
    <message>
        <source>The folder&apos;s path on this computer</source>
        <translation>Η διαδρομή του φακέλου σε αυτόν τον υπολογιστή</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Διακομιστής</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Χρήστης</translation>
    </message>
    <message>
        <source>The account on the server</source>
        <translation>Ο λογαριασμός στον διακομιστή</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Κωδικός πρόσβασης</translation>
    </message>
    <message>
        <source>Empty leaves the stored one as it is</source>
        <translation>Κενό: μένει ο αποθηκευμένος όπως είναι</translation>
    </message>
    <message>
        <source>Browse for the certificate</source>
        <translation>Αναζήτηση του πιστοποιητικού</translation>
    </message>
    <message>
        <source>Certificate of the server&apos;s authority (optional)</source>
        <translation>Πιστοποιητικό της αρχής του διακομιστή (προαιρετικό)</translation>
    </message>
    <message>
        <source>One that this computer trusts already</source>
        <translation>Μια που ο υπολογιστής ήδη εμπιστεύεται</translation>
    </message>
    <message>
        <source>The data stay on this computer. What is in a folder or on a server stays there for the other computers.</source>
        <translation>Τα δεδομένα μένουν σε αυτόν τον υπολογιστή. Ό,τι υπάρχει σε φάκελο ή σε διακομιστή μένει εκεί για τους άλλους υπολογιστές.</translation>
    </message>
    <message>
        <source>Keep the data on this computer only</source>
        <translation>Διατήρηση των δεδομένων μόνο σε αυτόν τον υπολογιστή</translation>
    </message>
    <message>
        <source>A folder that Syncthing, Nextcloud, Dropbox, NFS or the like keeps the same on your computers. It must carry over all files and subfolders, in any order, and never change or leave out any. Whoever can read the folder can read your dictations.</source>
        <translation>Ένας φάκελος που το Syncthing, το Nextcloud, το Dropbox, το NFS ή κάτι παρόμοιο κρατά ίδιο στους υπολογιστές σου. Πρέπει να μεταφέρονται όλα τα αρχεία και οι υποφάκελοι, με οποιαδήποτε σειρά, χωρίς να αλλάζει ή να παραλείπεται κανένα. Όποιος μπορεί να διαβάσει τον φάκελο μπορεί να διαβάσει τις υπαγορεύσεις σου.</translation>
    </message>
    <message>
        <source>Use this folder</source>
        <translation>Χρήση αυτού του φακέλου</translation>
    </message>
    <message>
        <source>A database that was set up with quorvi-cloud-server. The password goes into your keyring. The server must have a certificate that this computer trusts, or that the authority below has signed.</source>
        <translation>Μια βάση δεδομένων που στήθηκε με το quorvi-cloud-server. Ο κωδικός πρόσβασης μπαίνει στην κλειδοθήκη σου. Ο διακομιστής πρέπει να έχει πιστοποιητικό που εμπιστεύεται αυτός ο υπολογιστής ή που έχει υπογράψει η αρχή παρακάτω.</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Χρήση αυτού του διακομιστή</translation>
    </message>
    <message>
        <source>Choose the shared folder</source>
        <translation>Επιλογή του κοινόχρηστου φακέλου</translation>
    </message>
    <message>
        <source>Choose the certificate</source>
        <translation>Επιλογή του πιστοποιητικού</translation>
    </message>
    <message>
        <source>The keyring did not take the password. Unlock it and try again.</source>
        <translation>Η κλειδοθήκη δεν δέχτηκε τον κωδικό πρόσβασης. Ξεκλείδωσέ την και δοκίμασε ξανά.</translation>
    </message>
</context>
<context>
    <name>Confirmation</name>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
</context>
<context>
    <name>CorrectionEditor</name>
    <message>
        <source>Remember a correction</source>
        <translation>Απομνημόνευση διόρθωσης</translation>
    </message>
    <message>
        <source>Save a word or short phrase once. Quorvi will use your preferred spelling in future dictations.</source>
        <translation>Αποθήκευσε μια λέξη ή σύντομη φράση μία φορά. Το Quorvi θα χρησιμοποιεί τη γραφή που προτιμάς στις επόμενες υπαγορεύσεις.</translation>
    </message>
    <message>
        <source>e.g. Russet Miner</source>
        <translation>π.χ. Russet Miner</translation>
    </message>
    <message>
        <source>e.g. russetmanor</source>
        <translation>π.χ. russetmanor</translation>
    </message>
    <message>
        <source>Quorvi writes</source>
        <translation>Το Quorvi γράφει</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Αντικατάσταση με</translation>
    </message>
    <message>
        <source>Use the exact replacement you want, including capitals. This saves a rule for future text; existing text stays as written.</source>
        <translation>Γράψε την αντικατάσταση ακριβώς όπως τη θέλεις, και με τα κεφαλαία. Ο κανόνας ισχύει για μελλοντικό κείμενο· το υπάρχον μένει όπως γράφτηκε.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Προεπισκόπηση</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
    <message>
        <source>Save correction</source>
        <translation>Αποθήκευση διόρθωσης</translation>
    </message>
    <message>
        <source>That phrase does not match this transcript. The rule will still apply to future matches.</source>
        <translation>Η φράση δεν υπάρχει σε αυτό το κείμενο. Ο κανόνας θα ισχύει για μελλοντικές εμφανίσεις.</translation>
    </message>
</context>
<context>
    <name>CorrectionRow</name>
    <message>
        <source>Enable correction</source>
        <translation>Ενεργή διόρθωση</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Επεξεργασία</translation>
    </message>
    <message>
        <source>Delete correction</source>
        <translation>Διαγραφή διόρθωσης</translation>
    </message>
    <message>
        <source>Learned from an edit</source>
        <translation>Από δική σου αλλαγή</translation>
    </message>
    <message>
        <source>Saved by you</source>
        <translation>Αποθηκεύτηκε από εσένα</translation>
    </message>
    <message>
        <source>Enable correction for %1</source>
        <translation>Ενεργή διόρθωση για %1</translation>
    </message>
    <message>
        <source>Edit correction for %1</source>
        <translation>Επεξεργασία διόρθωσης για %1</translation>
    </message>
    <message>
        <source>Delete correction for %1</source>
        <translation>Διαγραφή διόρθωσης για %1</translation>
    </message>
</context>
<context>
    <name>CorrectionsSettings</name>
    <message>
        <source>Corrections</source>
        <translation>Διορθώσεις</translation>
    </message>
    <message>
        <source>Keep brand names and preferred spellings consistent. Corrections apply automatically before Quorvi pastes or saves your text.</source>
        <translation>Κράτα ίδια τα εμπορικά ονόματα και τις γραφές που προτιμάς. Οι διορθώσεις εφαρμόζονται πριν το Quorvi επικολλήσει ή αποθηκεύσει το κείμενό σου.</translation>
    </message>
    <message>
        <source>Learn from my edits in other apps</source>
        <translation>Μάθηση από τις αλλαγές μου σε άλλες εφαρμογές</translation>
    </message>
    <message>
        <source>Correct the text in the same field, then pause for two seconds. Quorvi saves short spelling corrections automatically and shows Correction saved. It watches for up to one minute after pasting. Mixed Greek and Latin spellings work too.</source>
        <translation>Διόρθωσε το κείμενο στο ίδιο πεδίο και περίμενε δύο δευτερόλεπτα. Το Quorvi αποθηκεύει αυτόματα σύντομες ορθογραφικές διορθώσεις και δείχνει «Η διόρθωση αποθηκεύτηκε». Παρακολουθεί έως ένα λεπτό μετά την επικόλληση. Λειτουργεί και με μεικτές ελληνικές και λατινικές γραφές.</translation>
    </message>
    <message>
        <source>Test automatic learning</source>
        <translation>Δοκιμή αυτόματης μάθησης</translation>
    </message>
    <message>
        <source>Click a field in another app within 10 seconds. Then change oxygen to oxygon in the sample and pause. No recording or API usage.</source>
        <translation>Κάνε κλικ σε πεδίο άλλης εφαρμογής μέσα σε 10 δευτερόλεπτα. Μετά άλλαξε το oxygen σε oxygon στο δείγμα και περίμενε. Χωρίς ηχογράφηση και χωρίς χρήση του API.</translation>
    </message>
    <message>
        <source>Add correction</source>
        <translation>Προσθήκη διόρθωσης</translation>
    </message>
    <message>
        <source>Saved corrections</source>
        <translation>Αποθηκευμένες διορθώσεις</translation>
    </message>
    <message>
        <source>Search corrections</source>
        <translation>Αναζήτηση διορθώσεων</translation>
    </message>
    <message>
        <source>No saved corrections. Add the phrase Quorvi writes and the spelling you want.</source>
        <translation>Καμία αποθηκευμένη διόρθωση. Πρόσθεσε τη φράση που γράφει το Quorvi και τη γραφή που θέλεις.</translation>
    </message>
    <message>
        <source>Show more</source>
        <translation>Περισσότερα</translation>
    </message>
    <message>
        <source>Matching ignores capitalization and extra spaces, and uses whole words. Your replacement keeps its exact spelling and capitalization. Saved rules sync between your Macs when iCloud sync is enabled.</source>
        <translation>Η σύγκριση γίνεται σε ολόκληρες λέξεις και αγνοεί κεφαλαία και περιττά κενά. Η αντικατάσταση μένει ακριβώς όπως τη γράφεις. Οι κανόνες συγχρονίζονται μεταξύ των υπολογιστών σου όταν ο συγχρονισμός είναι ενεργός.</translation>
    </message>
    <message>
        <source>Automatic learning is off.</source>
        <translation>Η αυτόματη μάθηση είναι ανενεργή.</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Καθαρισμός αναζήτησης</translation>
    </message>
</context>
<context>
    <name>DesktopSettings</name>
    <message>
        <source>This desktop</source>
        <translation>Αυτή η επιφάνεια εργασίας</translation>
    </message>
    <message>
        <source>Press keys to paste</source>
        <translation>Πάτημα πλήκτρων για επικόλληση</translation>
    </message>
    <message>
        <source>For fields that take text in no other way; without it, the text is left on the clipboard. The desktop may ask you once: allow remote interaction there, and let it remember that. While Quorvi pastes, the desktop shows that it is shared.</source>
        <translation>Για πεδία που δεν δέχονται κείμενο με άλλον τρόπο· χωρίς αυτό, το κείμενο μένει στο πρόχειρο. Η επιφάνεια εργασίας ίσως σε ρωτήσει μία φορά: επίτρεψε εκεί την απομακρυσμένη αλληλεπίδραση και άφησέ την να το θυμάται. Όσο το Quorvi επικολλά, η επιφάνεια εργασίας δείχνει ότι είναι κοινόχρηστη.</translation>
    </message>
    <message>
        <source>The desktop is asking you.</source>
        <translation>Η επιφάνεια εργασίας σε ρωτά τώρα.</translation>
    </message>
    <message>
        <source>The desktop does not allow it, or does not remember that you do.</source>
        <translation>Η επιφάνεια εργασίας δεν το επιτρέπει ή δεν θυμάται ότι το επιτρέπεις.</translation>
    </message>
</context>
<context>
    <name>DictationPage</name>
    <message>
        <source>Speak in your language.</source>
        <translation>Μίλα στη γλώσσα σου.</translation>
    </message>
    <message>
        <source>Quorvi stays in your menu bar. Press Esc to cancel a dictation.</source>
        <translation>Το Quorvi μένει στην περιοχή ειδοποιήσεων. Πάτησε Esc για να ακυρώσεις μια υπαγόρευση.</translation>
    </message>
    <message>
        <source>Quorvi stays in your menu bar. “quorvi cancel” cancels a dictation.</source>
        <translation>Το Quorvi μένει στην περιοχή ειδοποιήσεων. Η εντολή «quorvi cancel» ακυρώνει μια υπαγόρευση.</translation>
    </message>
</context>
<context>
    <name>DictationSettings</name>
    <message>
        <source>Dictation</source>
        <translation>Υπαγόρευση</translation>
    </message>
    <message>
        <source>Press and release Left or Right Control, Right Option, or a function key. You can also use a key with ⌘ / ⌃ / ⌥. Esc cancels.</source>
        <translation>Πάτησε και άφησε το αριστερό ή δεξί Ctrl, το δεξί Alt ή ένα πλήκτρο λειτουργίας. Μπορείς και πλήκτρο με Ctrl, Alt ή Super. Το Esc ακυρώνει.</translation>
    </message>
    <message>
        <source>Record custom shortcut…</source>
        <translation>Δική σου συντόμευση…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
    <message>
        <source>Keep the shortcut</source>
        <translation>Διατήρηση της συντόμευσης</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Συντόμευση</translation>
    </message>
    <message>
        <source>Choose a shortcut that no other dictation app, and no other application, uses already. Function keys may require Fn.</source>
        <translation>Διάλεξε συντόμευση που δεν τη χρησιμοποιεί ήδη άλλη εφαρμογή υπαγόρευσης ή άλλη εφαρμογή. Τα πλήκτρα λειτουργίας ίσως χρειάζονται το Fn.</translation>
    </message>
    <message>
        <source>Shortcut mode</source>
        <translation>Τρόπος συντόμευσης</translation>
    </message>
    <message>
        <source>Reset dictation</source>
        <translation>Επαναφορά υπαγόρευσης</translation>
    </message>
    <message>
        <source>If your shortcut stops responding, reset dictation to reconnect keyboard access.</source>
        <translation>Αν η συντόμευση δεν ανταποκρίνεται, κάνε επαναφορά για να συνδεθεί ξανά το πληκτρολόγιο.</translation>
    </message>
    <message>
        <source>Interaction</source>
        <translation>Αλληλεπίδραση</translation>
    </message>
    <message>
        <source>Start sound</source>
        <translation>Ήχος έναρξης</translation>
    </message>
    <message>
        <source>Preview start</source>
        <translation>Δοκιμή έναρξης</translation>
    </message>
    <message>
        <source>Stop sound</source>
        <translation>Ήχος λήξης</translation>
    </message>
    <message>
        <source>Preview stop</source>
        <translation>Δοκιμή λήξης</translation>
    </message>
    <message>
        <source>Choose a separate cue for starting and stopping. Silent disables just that cue.</source>
        <translation>Διάλεξε χωριστό ήχο για έναρξη και λήξη. Το «Σιωπηλό» απενεργοποιεί μόνο εκείνον τον ήχο.</translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation>Πάτησε πλήκτρο…</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Συντόμευση: %1</translation>
    </message>
    <message>
        <source>Press the new shortcut. Esc keeps %1.</source>
        <translation>Πάτησε τη νέα συντόμευση. Με Esc μένει: %1.</translation>
    </message>
    <message>
        <source>Play sounds</source>
        <translation>Αναπαραγωγή ήχων</translation>
    </message>
    <message>
        <source>Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. Esc cancels.</source>
        <translation>Χρησιμοποίησε ένα πλήκτρο λειτουργίας ή ένα πλήκτρο με Ctrl, Alt ή Super. Αυτή η επιφάνεια εργασίας δεν αναφέρει μεμονωμένα πλήκτρα τροποποίησης. Το Esc ακυρώνει.</translation>
    </message>
    <message>
        <source>Add the shortcut to the desktop&apos;s settings</source>
        <translation>Προσθήκη της συντόμευσης στις ρυθμίσεις της επιφάνειας εργασίας</translation>
    </message>
    <message>
        <source>The desktop runs a small program of Quorvi when you press the shortcut. You find it among the custom shortcuts in the desktop&apos;s settings while Quorvi runs. Switched off, nothing of it stays there.</source>
        <translation>Η επιφάνεια εργασίας εκτελεί ένα μικρό πρόγραμμα του Quorvi όταν πατάς τη συντόμευση. Τη βρίσκεις στις προσαρμοσμένες συντομεύσεις των ρυθμίσεών της όσο εκτελείται το Quorvi. Αν το απενεργοποιήσεις, δεν μένει τίποτα εκεί.</translation>
    </message>
    <message>
        <source>Use a function key, or a key with ⌘ / ⌃ / ⌥. This desktop reports no lone modifiers. “quorvi cancel” cancels.</source>
        <translation>Χρησιμοποίησε ένα πλήκτρο λειτουργίας ή ένα πλήκτρο με Ctrl, Alt ή Super. Αυτή η επιφάνεια εργασίας δεν αναφέρει μεμονωμένα πλήκτρα τροποποίησης. Η εντολή «quorvi cancel» ακυρώνει.</translation>
    </message>
</context>
<context>
    <name>GeneralSettings</name>
    <message>
        <source>General</source>
        <translation>Γενικά</translation>
    </message>
    <message>
        <source>Launch Quorvi at login</source>
        <translation>Εκκίνηση του Quorvi κατά τη σύνδεση</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>Άνοιγμα εφαρμογών εκκίνησης</translation>
    </message>
</context>
<context>
    <name>HistoryPage</name>
    <message>
        <source>YOUR WORDS, KEPT CLOSE</source>
        <translation>ΤΑ ΛΟΓΙΑ ΣΟΥ, ΚΟΝΤΑ ΣΟΥ</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Ιστορικό</translation>
    </message>
    <message>
        <source>Search and reuse your dictations.</source>
        <translation>Αναζήτησε και ξαναχρησιμοποίησε τις υπαγορεύσεις σου.</translation>
    </message>
    <message>
        <source>Load more</source>
        <translation>Φόρτωση περισσότερων</translation>
    </message>
    <message>
        <source>Saving new transcripts is off. Existing history is still available.</source>
        <translation>Η αποθήκευση νέων κειμένων είναι ανενεργή. Το υπάρχον ιστορικό είναι διαθέσιμο.</translation>
    </message>
    <message>
        <source>Search transcripts or apps</source>
        <translation>Αναζήτηση κειμένων ή εφαρμογών</translation>
    </message>
    <message>
        <source>Search dictation history</source>
        <translation>Αναζήτηση στο ιστορικό υπαγορεύσεων</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Καθαρισμός αναζήτησης</translation>
    </message>
    <message>
        <source>No matching dictations</source>
        <translation>Καμία υπαγόρευση δεν ταιριάζει</translation>
    </message>
    <message>
        <source>Your next dictation starts your history</source>
        <translation>Το ιστορικό σου ξεκινά με την επόμενη υπαγόρευση</translation>
    </message>
    <message>
        <source>Transcript saving is paused</source>
        <translation>Η αποθήκευση κειμένων έχει διακοπεί</translation>
    </message>
    <message>
        <source>Try a word, phrase, or app name.</source>
        <translation>Δοκίμασε λέξη, φράση ή όνομα εφαρμογής.</translation>
    </message>
    <message>
        <source>Manage transcript saving and retention in Settings.</source>
        <translation>Η αποθήκευση και η διατήρηση κειμένων ορίζονται στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>Delete this dictation?</source>
        <translation>Διαγραφή αυτής της υπαγόρευσης;</translation>
    </message>
    <message>
        <source>It will be removed from history and usage statistics, including your other Macs when iCloud sync is enabled.</source>
        <translation>Θα αφαιρεθεί από το ιστορικό και τα στατιστικά χρήσης, και στους άλλους υπολογιστές σου όταν ο συγχρονισμός είναι ενεργός.</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Διαγραφή</translation>
    </message>
</context>
<context>
    <name>HistoryRow</name>
    <message>
        <source>Show full text</source>
        <translation>Όλο το κείμενο</translation>
    </message>
    <message>
        <source>Copy dictation</source>
        <translation>Αντιγραφή υπαγόρευσης</translation>
    </message>
    <message>
        <source>Delete dictation</source>
        <translation>Διαγραφή υπαγόρευσης</translation>
    </message>
    <message>
        <source>Show less</source>
        <translation>Λιγότερα</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Αντιγράφηκε</translation>
    </message>
</context>
<context>
    <name>HistorySettings</name>
    <message>
        <source>History &amp; statistics</source>
        <translation>Ιστορικό και στατιστικά</translation>
    </message>
    <message>
        <source>Save transcript history</source>
        <translation>Αποθήκευση ιστορικού κειμένων</translation>
    </message>
    <message>
        <source>Keep transcript text</source>
        <translation>Διατήρηση κειμένων</translation>
    </message>
    <message>
        <source>Delete all history and statistics…</source>
        <translation>Διαγραφή όλου του ιστορικού και των στατιστικών…</translation>
    </message>
    <message>
        <source>Turning this off stops saving new text. Existing history remains, and usage statistics continue without transcript text.</source>
        <translation>Αν το κλείσεις, δεν αποθηκεύεται νέο κείμενο. Το υπάρχον ιστορικό μένει και τα στατιστικά συνεχίζουν χωρίς κείμενα.</translation>
    </message>
    <message>
        <source>Older text is removed automatically. Word counts, speaking time, cost estimates, dates and app names remain for Insights. Recordings are not kept.</source>
        <translation>Τα παλαιότερα κείμενα αφαιρούνται αυτόματα. Ο αριθμός λέξεων, ο χρόνος ομιλίας, το εκτιμώμενο κόστος, οι ημερομηνίες και τα ονόματα εφαρμογών μένουν για τα στοιχεία χρήσης. Οι ηχογραφήσεις δεν κρατιούνται.</translation>
    </message>
    <message>
        <source>Delete all history and statistics?</source>
        <translation>Διαγραφή όλου του ιστορικού και των στατιστικών;</translation>
    </message>
    <message>
        <source>This permanently removes every saved Quorvi dictation and resets your usage totals, including your other Macs when iCloud sync is enabled.</source>
        <translation>Αυτό αφαιρεί οριστικά κάθε αποθηκευμένη υπαγόρευση και μηδενίζει τα σύνολα χρήσης, και στους άλλους υπολογιστές σου όταν ο συγχρονισμός είναι ενεργός.</translation>
    </message>
    <message>
        <source>Delete all</source>
        <translation>Διαγραφή όλων</translation>
    </message>
</context>
<context>
    <name>HistoryTexts</name>
    <message>
        <source>%1 dictation</source>
        <translation>%1 υπαγόρευση</translation>
    </message>
    <message numerus="yes">
        <source>%1 dictations</source>
        <translation>
            <numerusform>%1 υπαγόρευση</numerusform>
            <numerusform>%1 υπαγορεύσεις</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 words</source>
        <translation>
            <numerusform>%1 λέξη</numerusform>
            <numerusform>%1 λέξεις</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · older dictations</source>
        <translation>%1 · παλαιότερες υπαγορεύσεις</translation>
    </message>
    <message>
        <source>%1 min · %2/min</source>
        <translation>%1 λεπ. · %2/λεπτό</translation>
    </message>
    <message>
        <source>USD rate checked %1. GPT-4o model rates are approximate per-minute equivalents.</source>
        <translation>Τιμές σε USD, έλεγχος %1. Οι τιμές των μοντέλων GPT-4o είναι κατά προσέγγιση ανά λεπτό.</translation>
    </message>
    <message>
        <source>For %1 older dictation, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</source>
        <translation>Για %1 παλαιότερη υπαγόρευση δεν αποθηκεύτηκε το μοντέλο. Λογαριάζεται η τιμή του GPT Transcribe.</translation>
    </message>
    <message numerus="yes">
        <source>For %1 older dictations, the model wasn&apos;t saved. GPT Transcribe pricing is assumed.</source>
        <translation>
            <numerusform>Για %1 παλαιότερη υπαγόρευση δεν αποθηκεύτηκε το μοντέλο. Λογαριάζεται η τιμή του GPT Transcribe.</numerusform>
            <numerusform>Για %1 παλαιότερες υπαγορεύσεις δεν αποθηκεύτηκε το μοντέλο. Λογαριάζεται η τιμή του GPT Transcribe.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 sec</source>
        <translation>%1 δευτ.</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 λεπ.</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1 ώ. %2 λ.</translation>
    </message>
    <message>
        <source>Top %1 of %2 apps</source>
        <translation>Οι πρώτες %1 από %2 εφαρμογές</translation>
    </message>
    <message numerus="yes">
        <source>%1-day streak</source>
        <translation>
            <numerusform>%1 ημέρα στη σειρά</numerusform>
            <numerusform>%1 ημέρες στη σειρά</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Best: %1 days · all time</source>
        <translation>
            <numerusform>Καλύτερο: %1 ημέρα · συνολικά</numerusform>
            <numerusform>Καλύτερο: %1 ημέρες · συνολικά</numerusform>
        </translation>
    </message>
    <message>
        <source>TODAY</source>
        <translation>ΣΗΜΕΡΑ</translation>
    </message>
    <message>
        <source>YESTERDAY</source>
        <translation>ΧΘΕΣ</translation>
    </message>
    <message numerus="yes">
        <source>%1 saved dictations</source>
        <translation>
            <numerusform>%1 αποθηκευμένη υπαγόρευση</numerusform>
            <numerusform>%1 αποθηκευμένες υπαγορεύσεις</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 words · %2 sec</source>
        <translation>
            <numerusform>%1 λέξη · %2 δευτ.</numerusform>
            <numerusform>%1 λέξεις · %2 δευτ.</numerusform>
        </translation>
    </message>
    <message>
        <source>Offline recogniser</source>
        <translation>Αναγνώριση χωρίς δίκτυο</translation>
    </message>
    <message>
        <source>%1 min · not estimated</source>
        <translation>%1 λεπτά · χωρίς εκτίμηση</translation>
    </message>
</context>
<context>
    <name>InsightsPage</name>
    <message>
        <source>YOUR DICTATION, IN NUMBERS</source>
        <translation>ΟΙ ΥΠΑΓΟΡΕΥΣΕΙΣ ΣΟΥ ΣΕ ΑΡΙΘΜΟΥΣ</translation>
    </message>
    <message>
        <source>Insights</source>
        <translation>Στοιχεία χρήσης</translation>
    </message>
    <message>
        <source>Usage across your synced Macs, measured from your Quorvi dictations.</source>
        <translation>Χρήση στους συγχρονισμένους υπολογιστές σου, μετρημένη από τις υπαγορεύσεις σου στο Quorvi.</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Περίοδος</translation>
    </message>
    <message>
        <source>Estimated API cost</source>
        <translation>Εκτιμώμενο κόστος API</translation>
    </message>
    <message>
        <source>Speed is total words divided by recording time. Counts include completed transcriptions, even when you copy them manually. Statistics start with this version of Quorvi.</source>
        <translation>Η ταχύτητα είναι το σύνολο λέξεων διά του χρόνου ηχογράφησης. Μετρούν οι ολοκληρωμένες μεταγραφές, ακόμη κι όταν τις αντιγράφεις με το χέρι. Τα στατιστικά αρχίζουν με αυτή την έκδοση του Quorvi.</translation>
    </message>
    <message>
        <source>Words dictated</source>
        <translation>Λέξεις</translation>
    </message>
    <message>
        <source>Words per minute</source>
        <translation>Λέξεις ανά λεπτό</translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation>Υπαγορεύσεις</translation>
    </message>
    <message>
        <source>Speaking time</source>
        <translation>Χρόνος ομιλίας</translation>
    </message>
    <message>
        <source>Apps used</source>
        <translation>Εφαρμογές</translation>
    </message>
    <message>
        <source>Daily words</source>
        <translation>Λέξεις ανά ημέρα</translation>
    </message>
    <message>
        <source>Daily words dictated in the last fourteen days</source>
        <translation>Λέξεις ανά ημέρα τις τελευταίες δεκατέσσερις ημέρες</translation>
    </message>
    <message>
        <source>Last 14 days</source>
        <translation>Τελευταίες 14 ημέρες</translation>
    </message>
    <message>
        <source>Usage by app</source>
        <translation>Χρήση ανά εφαρμογή</translation>
    </message>
    <message>
        <source>Your writing apps will appear here after you dictate.</source>
        <translation>Εδώ θα εμφανιστούν οι εφαρμογές όπου υπαγορεύεις.</translation>
    </message>
    <message>
        <source>Activity over the last 12 weeks</source>
        <translation>Δραστηριότητα τις τελευταίες 12 εβδομάδες</translation>
    </message>
    <message>
        <source>A day counts toward your streak when you complete at least one dictation.</source>
        <translation>Μια ημέρα μετρά όταν ολοκληρώσεις τουλάχιστον μία υπαγόρευση.</translation>
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
        <translation>Μικρόφωνο</translation>
    </message>
    <message>
        <source>Record from</source>
        <translation>Εγγραφή από</translation>
    </message>
    <message>
        <source>In use: %1</source>
        <translation>Σε χρήση: %1</translation>
    </message>
    <message>
        <source>No microphone is connected.</source>
        <translation>Δεν είναι συνδεδεμένο κανένα μικρόφωνο.</translation>
    </message>
    <message>
        <source>%1 is not connected. Until it is, Quorvi uses the system’s default.</source>
        <translation>Η συσκευή %1 δεν είναι συνδεδεμένη. Όσο λείπει, το Quorvi χρησιμοποιεί την προεπιλογή του συστήματος.</translation>
    </message>
    <message>
        <source>Speak, and the bars move. Quorvi listens for them only while they are shown, and keeps nothing.</source>
        <translation>Μίλησε και οι μπάρες κινούνται. Το Quorvi ακούει γι’ αυτές μόνο όσο φαίνονται και δεν κρατά τίποτα.</translation>
    </message>
    <message>
        <source>System default</source>
        <translation>Προεπιλογή συστήματος</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (λείπει)</translation>
    </message>
</context>
<context>
    <name>Model</name>
    <message>
        <source>Listening…</source>
        <translation>Ακούει…</translation>
    </message>
    <message>
        <source>Transcribing…</source>
        <translation>Μεταγράφει…</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Εισάγει…</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Έτοιμο</translation>
    </message>
    <message>
        <source>Ready to paste</source>
        <translation>Έτοιμο για επικόλληση</translation>
    </message>
    <message>
        <source>Needs attention</source>
        <translation>Χρειάζεται προσοχή</translation>
    </message>
    <message>
        <source>Correction saved</source>
        <translation>Η διόρθωση αποθηκεύτηκε</translation>
    </message>
    <message>
        <source>Classic</source>
        <translation>Κλασικός</translation>
    </message>
    <message>
        <source>Soft</source>
        <translation>Απαλός</translation>
    </message>
    <message>
        <source>Chime</source>
        <translation>Καμπάνα</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Κλικ</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Σιωπηλό</translation>
    </message>
    <message>
        <source>Hold to talk</source>
        <translation>Κράτημα για ομιλία</translation>
    </message>
    <message>
        <source>Press to toggle</source>
        <translation>Πάτημα για εναλλαγή</translation>
    </message>
    <message>
        <source>Glass</source>
        <translation>Γυαλί</translation>
    </message>
    <message>
        <source>Midnight</source>
        <translation>Μεσάνυχτα</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>Χαρτί</translation>
    </message>
    <message>
        <source>Frosted glass, blue accents, and a clean native feel.</source>
        <translation>Θαμπό γυαλί, γαλάζιες πινελιές, καθαρή και οικεία όψη.</translation>
    </message>
    <message>
        <source>A dark capsule with bright mint accents.</source>
        <translation>Σκούρα κάψουλα με φωτεινές πινελιές μέντας.</translation>
    </message>
    <message>
        <source>Warm ivory, ink lettering, and terracotta accents.</source>
        <translation>Ζεστό ιβουάρ, γράμματα μελανιού και πινελιές τερακότας.</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Σήμερα</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 ημέρες</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 ημέρες</translation>
    </message>
    <message>
        <source>90 days</source>
        <translation>90 ημέρες</translation>
    </message>
    <message>
        <source>1 year</source>
        <translation>1 έτος</translation>
    </message>
    <message>
        <source>This month</source>
        <translation>Αυτός ο μήνας</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Συνολικά</translation>
    </message>
    <message>
        <source>Until I delete it</source>
        <translation>Μέχρι να το διαγράψω</translation>
    </message>
    <message>
        <source>Quorvi will stay closed when you sign in.</source>
        <translation>Το Quorvi θα μένει κλειστό όταν συνδέεσαι.</translation>
    </message>
    <message>
        <source>Quorvi will start quietly in the menu bar when you sign in.</source>
        <translation>Το Quorvi θα ξεκινά αθόρυβα στην περιοχή ειδοποιήσεων όταν συνδέεσαι.</translation>
    </message>
    <message>
        <source>Allow Quorvi in System Settings → General → Login Items.</source>
        <translation>Το Quorvi είναι ανενεργό στις εφαρμογές εκκίνησης. Ενεργοποίησέ το εκεί.</translation>
    </message>
    <message>
        <source>Launch at login is available after Quorvi is installed in Applications.</source>
        <translation>Η εκκίνηση κατά τη σύνδεση είναι διαθέσιμη αφού εγκατασταθεί το Quorvi.</translation>
    </message>
    <message>
        <source>Launch-at-login status is unavailable.</source>
        <translation>Η κατάσταση εκκίνησης κατά τη σύνδεση δεν είναι διαθέσιμη.</translation>
    </message>
    <message>
        <source>Sync paused on this Mac</source>
        <translation>Ο συγχρονισμός έχει διακοπεί σε αυτόν τον υπολογιστή</translation>
    </message>
    <message>
        <source>Ready to learn from your next dictation.</source>
        <translation>Έτοιμο να μάθει από την επόμενη υπαγόρευσή σου.</translation>
    </message>
    <message>
        <source>Saved in macOS Keychain.</source>
        <translation>Αποθηκεύτηκε στην κλειδοθήκη σου.</translation>
    </message>
    <message>
        <source>API key removed.</source>
        <translation>Το κλειδί API αφαιρέθηκε.</translation>
    </message>
    <message>
        <source>API key sync enabled. Turn on iCloud Passwords &amp; Keychain on your other Macs.</source>
        <translation>Το κλειδί API σημάνθηκε για συγχρονισμό. Φτάνει στους άλλους υπολογιστές σου αν συγχρονίζεις την κλειδοθήκη σου.</translation>
    </message>
    <message>
        <source>API key kept on this Mac; iCloud copy removed.</source>
        <translation>Το κλειδί μένει σε αυτόν τον υπολογιστή· το αντίγραφο για συγχρονισμό αφαιρέθηκε.</translation>
    </message>
    <message>
        <source>Enter a valid API key without spaces.</source>
        <translation>Δώσε έγκυρο κλειδί API χωρίς κενά.</translation>
    </message>
    <message>
        <source>This API key is kept in memory only. Save a key in Settings to sync it.</source>
        <translation>Αυτό το κλειδί API κρατιέται μόνο στη μνήμη. Αποθήκευσε κλειδί στις Ρυθμίσεις για να συγχρονιστεί.</translation>
    </message>
    <message>
        <source>That phrase already has a correction. Edit its existing rule instead.</source>
        <translation>Η φράση έχει ήδη διόρθωση. Επεξεργάσου τον υπάρχοντα κανόνα.</translation>
    </message>
    <message>
        <source>Keep each phrase within 160 characters.</source>
        <translation>Κάθε φράση έως 160 χαρακτήρες.</translation>
    </message>
    <message>
        <source>Saved corrections could not be opened. They have been left untouched.</source>
        <translation>Οι αποθηκευμένες διορθώσεις δεν άνοιξαν. Έμειναν ανέπαφες.</translation>
    </message>
    <message>
        <source>Existing history could not be opened. It has been left untouched; new entries are available for this session only.</source>
        <translation>Το υπάρχον ιστορικό δεν άνοιξε. Έμεινε ανέπαφο· οι νέες εγγραφές ισχύουν μόνο για τώρα.</translation>
    </message>
    <message>
        <source>History could not be saved on this Mac. Check available disk space and folder access.</source>
        <translation>Το ιστορικό δεν αποθηκεύτηκε σε αυτόν τον υπολογιστή. Έλεγξε τον χώρο στον δίσκο και την πρόσβαση στον φάκελο.</translation>
    </message>
    <message>
        <source>Cancelled. Ready for your next dictation.</source>
        <translation>Ακυρώθηκε. Έτοιμο για την επόμενη υπαγόρευση.</translation>
    </message>
    <message>
        <source>Converting speech to text…</source>
        <translation>Μετατροπή ομιλίας σε κείμενο…</translation>
    </message>
    <message>
        <source>No audible speech detected. Hold the key a little longer and try again.</source>
        <translation>Δεν ακούστηκε ομιλία. Κράτησε το πλήκτρο λίγο περισσότερο και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>Text copied — press ⌘V in any text field.</source>
        <translation>Αντιγράφηκε — πάτησε Ctrl+V (σε τερματικό Ctrl+Shift+V).</translation>
    </message>
    <message>
        <source>Enable Accessibility in Settings to test text insertion.</source>
        <translation>Ενεργοποίησε την προσβασιμότητα στις Ρυθμίσεις για τη δοκιμή εισαγωγής.</translation>
    </message>
    <message>
        <source>Use Left or Right Control, Right Option, a function key, or a shortcut with ⌘, ⌃ or ⌥.</source>
        <translation>Χρησιμοποίησε αριστερό ή δεξί Ctrl, δεξί Alt, πλήκτρο λειτουργίας ή συντόμευση με Ctrl, Alt ή Super.</translation>
    </message>
    <message>
        <source>Click a text field in another app. A sample will be pasted in 10 seconds. Esc cancels.</source>
        <translation>Κάνε κλικ σε πεδίο κειμένου άλλης εφαρμογής. Σε 10 δευτερόλεπτα θα επικολληθεί δείγμα. Το Esc ακυρώνει.</translation>
    </message>
    <message>
        <source>Your API key was rejected. Replace it in Settings.</source>
        <translation>Το κλειδί API απορρίφθηκε. Αντικατάστησέ το στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>The recording is too large. Try a shorter dictation.</source>
        <translation>Η ηχογράφηση είναι πολύ μεγάλη. Δοκίμασε συντομότερη υπαγόρευση.</translation>
    </message>
    <message>
        <source>The transcription service is temporarily unavailable. Please try again.</source>
        <translation>Η υπηρεσία δεν είναι προσωρινά διαθέσιμη. Δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>No speech was recognized. Try again closer to the microphone.</source>
        <translation>Δεν αναγνωρίστηκε ομιλία. Δοκίμασε πιο κοντά στο μικρόφωνο.</translation>
    </message>
    <message>
        <source>Add your OpenAI API key in Settings.</source>
        <translation>Πρόσθεσε το κλειδί API του OpenAI στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly during your last dictation. Nothing of it was kept; please dictate it again.</source>
        <translation>Το Quorvi έκλεισε απρόσμενα κατά την τελευταία σου υπαγόρευση. Δεν κρατήθηκε τίποτα· υπαγόρευσέ την ξανά.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while your last dictation was transcribed. Its text is not in the history; please dictate it again.</source>
        <translation>Το Quorvi έκλεισε απρόσμενα ενώ μετέτρεπε σε κείμενο την τελευταία σου υπαγόρευση. Το κείμενο δεν είναι στο ιστορικό· υπαγόρευσέ το ξανά.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while it inserted your last dictation. Its text is in the history.</source>
        <translation>Το Quorvi έκλεισε απρόσμενα ενώ εισήγαγε την τελευταία σου υπαγόρευση. Το κείμενο είναι στο ιστορικό.</translation>
    </message>
    <message>
        <source>Quorvi ended unexpectedly while it inserted your last dictation. Its text is not in the history; look for it where you were writing.</source>
        <translation>Το Quorvi έκλεισε απρόσμενα ενώ εισήγαγε την τελευταία σου υπαγόρευση. Το κείμενο δεν είναι στο ιστορικό· ψάξε το εκεί όπου έγραφες.</translation>
    </message>
    <message>
        <source>A required permission changed. Check Settings before dictating again.</source>
        <translation>Μια απαραίτητη άδεια άλλαξε. Έλεγξε τις Ρυθμίσεις πριν υπαγορεύσεις ξανά.</translation>
    </message>
    <message>
        <source>Keyboard access was interrupted. Try your shortcut again.</source>
        <translation>Η πρόσβαση στο πληκτρολόγιο διακόπηκε. Δοκίμασε ξανά τη συντόμευση.</translation>
    </message>
    <message>
        <source>Click a text field in your writing app first. Quorvi can stay in the menu bar.</source>
        <translation>Κάνε πρώτα κλικ σε πεδίο κειμένου της εφαρμογής σου. Το Quorvi μπορεί να μείνει στην περιοχή ειδοποιήσεων.</translation>
    </message>
    <message>
        <source>Select a regular text field to dictate.</source>
        <translation>Διάλεξε κανονικό πεδίο κειμένου για υπαγόρευση.</translation>
    </message>
    <message>
        <source>Click the text field you want to dictate into, then use your shortcut.</source>
        <translation>Κάνε κλικ στο πεδίο όπου θέλεις να υπαγορεύσεις και χρησιμοποίησε τη συντόμευση.</translation>
    </message>
    <message>
        <source>Dictation reset. Click a text field and hold your shortcut again.</source>
        <translation>Έγινε επαναφορά. Κάνε κλικ σε πεδίο κειμένου και κράτησε ξανά τη συντόμευση.</translation>
    </message>
    <message>
        <source>Dictation reset. Check permissions and API key setup in Settings.</source>
        <translation>Έγινε επαναφορά. Έλεγξε τις άδειες και το κλειδί API στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>Ready when you are</source>
        <translation>Έτοιμο όταν είσαι κι εσύ</translation>
    </message>
    <message>
        <source>your app</source>
        <translation>η εφαρμογή σου</translation>
    </message>
    <message>
        <source>Click a text field in any app, then use your shortcut.</source>
        <translation>Κάνε κλικ σε πεδίο κειμένου οποιασδήποτε εφαρμογής και χρησιμοποίησε τη συντόμευση.</translation>
    </message>
    <message>
        <source>Open Quorvi from the menu bar, then Settings to finish API key and permission setup.</source>
        <translation>Άνοιξε το Quorvi από την περιοχή ειδοποιήσεων και ολοκλήρωσε στις Ρυθμίσεις το κλειδί API και τις άδειες.</translation>
    </message>
    <message>
        <source>Dictating into {app}</source>
        <translation>Υπαγόρευση σε: {app}</translation>
    </message>
    <message>
        <source>Inserting into {app}…</source>
        <translation>Εισαγωγή σε: {app}…</translation>
    </message>
    <message>
        <source>Paste sent to {app}.</source>
        <translation>Η επικόλληση στάλθηκε σε: {app}.</translation>
    </message>
    <message>
        <source>Testing Paste in {app}…</source>
        <translation>Δοκιμή επικόλλησης σε: {app}…</translation>
    </message>
    <message>
        <source>Sample sent to {app}.</source>
        <translation>Το δείγμα στάλθηκε σε: {app}.</translation>
    </message>
    <message>
        <source>Click a text field in another app. Sample in {seconds} seconds. Esc cancels.</source>
        <translation>Κάνε κλικ σε πεδίο κειμένου άλλης εφαρμογής. Δείγμα σε {seconds} δευτερόλεπτα. Το Esc ακυρώνει.</translation>
    </message>
    <message>
        <source>Choose a text field and start dictating again.</source>
        <translation>Διάλεξε πεδίο κειμένου και ξεκίνα ξανά την υπαγόρευση.</translation>
    </message>
    <message>
        <source>The clipboard is unavailable. Use Copy text to try again, or select the transcript in Quorvi.</source>
        <translation>Το πρόχειρο δεν είναι διαθέσιμο. Δοκίμασε ξανά την αντιγραφή ή επίλεξε το κείμενο στο Quorvi.</translation>
    </message>
    <message>
        <source>Could not copy. You can select the transcript in Quorvi.</source>
        <translation>Η αντιγραφή απέτυχε. Μπορείς να επιλέξεις το κείμενο στο Quorvi.</translation>
    </message>
    <message>
        <source>Enter both the recognized phrase and its replacement.</source>
        <translation>Δώσε και τη φράση που αναγνωρίζεται και την αντικατάστασή της.</translation>
    </message>
    <message>
        <source>Enable Accessibility in Quorvi Settings to insert text.</source>
        <translation>Ενεργοποίησε την προσβασιμότητα στις Ρυθμίσεις του Quorvi για εισαγωγή κειμένου.</translation>
    </message>
    <message>
        <source>Accessibility access changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Η πρόσβαση στον δίαυλο προσβασιμότητας άλλαξε. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>The destination changed while dictating. Your transcript is ready to copy in Quorvi.</source>
        <translation>Ο προορισμός άλλαξε στη διάρκεια της υπαγόρευσης. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>The active window changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Το ενεργό παράθυρο άλλαξε. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>Select a regular text field. Your transcript is ready to copy in Quorvi.</source>
        <translation>Διάλεξε κανονικό πεδίο κειμένου. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>The focused field changed. Your transcript is ready to copy in Quorvi.</source>
        <translation>Το πεδίο εστίασης άλλαξε. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>The text cursor moved. Your transcript is ready to copy in Quorvi.</source>
        <translation>Ο δρομέας κειμένου μετακινήθηκε. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>Could not send Paste. Your transcript is ready to copy in Quorvi.</source>
        <translation>Η επικόλληση δεν στάλθηκε. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>A modifier key is still held. Release it and copy the transcript from Quorvi.</source>
        <translation>Ένα πλήκτρο τροποποίησης είναι ακόμη πατημένο. Άφησέ το και αντίγραψε το κείμενο από το Quorvi.</translation>
    </message>
    <message>
        <source>Release your modifier keys before inserting. Your transcript is ready to copy in Quorvi.</source>
        <translation>Άφησε τα πλήκτρα τροποποίησης πριν την εισαγωγή. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>The clipboard is unavailable. Your transcript is ready to copy in Quorvi.</source>
        <translation>Το πρόχειρο δεν είναι διαθέσιμο. Το κείμενό σου είναι έτοιμο για αντιγραφή στο Quorvi.</translation>
    </message>
    <message>
        <source>No recording is available.</source>
        <translation>Δεν υπάρχει ηχογράφηση.</translation>
    </message>
    <message>
        <source>Recording stopped unexpectedly. Check your microphone and try again.</source>
        <translation>Η ηχογράφηση σταμάτησε απρόσμενα. Έλεγξε το μικρόφωνό σου και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>Recording stopped unexpectedly. Please try again.</source>
        <translation>Η ηχογράφηση σταμάτησε απρόσμενα. Δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The microphone could not start. Check your macOS sound input.</source>
        <translation>Το μικρόφωνο δεν ξεκίνησε. Έλεγξε τη συσκευή εισόδου στις ρυθμίσεις ήχου.</translation>
    </message>
    <message>
        <source>The folder for recordings could not be created: {reason}.</source>
        <translation>Ο φάκελος ηχογραφήσεων δεν δημιουργήθηκε: {reason}.</translation>
    </message>
    <message>
        <source>The folder for recordings could not be made private: {reason}.</source>
        <translation>Ο φάκελος ηχογραφήσεων δεν έγινε ιδιωτικός: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be kept apart: {reason}.</source>
        <translation>Η ηχογράφηση δεν απομονώθηκε: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be read: {reason}.</source>
        <translation>Η ηχογράφηση δεν διαβάστηκε: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be created: {reason}.</source>
        <translation>Η ηχογράφηση δεν δημιουργήθηκε: {reason}.</translation>
    </message>
    <message>
        <source>The recording could not be written: {reason}.</source>
        <translation>Η ηχογράφηση δεν γράφτηκε: {reason}.</translation>
    </message>
    <message>
        <source>The sound could not be encoded: {reason}.</source>
        <translation>Ο ήχος δεν κωδικοποιήθηκε: {reason}.</translation>
    </message>
    <message>
        <source>This system has no AAC encoder.</source>
        <translation>Το σύστημα δεν έχει κωδικοποιητή AAC.</translation>
    </message>
    <message>
        <source>This API project cannot use the selected model. Try GPT-4o Transcribe in Settings.</source>
        <translation>Αυτό το έργο API δεν μπορεί να χρησιμοποιήσει το επιλεγμένο μοντέλο. Δοκίμασε το GPT-4o Transcribe στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>The API is rate limited or has no remaining credit. Check your OpenAI API billing and try again.</source>
        <translation>Το API έφτασε το όριό του ή δεν έχει υπόλοιπο. Έλεγξε τη χρέωση του API του OpenAI και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>Transcription failed (HTTP {status}). Check your model and try again.</source>
        <translation>Η μεταγραφή απέτυχε (HTTP {status}). Έλεγξε το μοντέλο και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The transcription service returned no response.</source>
        <translation>Η υπηρεσία μεταγραφής δεν απάντησε.</translation>
    </message>
    <message>
        <source>The transcription service returned an unreadable result.</source>
        <translation>Η υπηρεσία μεταγραφής έδωσε αποτέλεσμα που δεν διαβάζεται.</translation>
    </message>
    <message>
        <source>This recording is empty or too large. Please record a shorter dictation.</source>
        <translation>Η ηχογράφηση είναι κενή ή πολύ μεγάλη. Κάνε συντομότερη υπαγόρευση.</translation>
    </message>
    <message>
        <source>The answer of the speech service was too large.</source>
        <translation>Η απάντηση της υπηρεσίας ομιλίας ήταν πολύ μεγάλη.</translation>
    </message>
    <message>
        <source>The request to the speech service failed ({reason}). Please try again.</source>
        <translation>Το αίτημα προς την υπηρεσία ομιλίας απέτυχε ({reason}). Δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The request to the speech service could not be made. Check your API key and the service address in Settings.</source>
        <translation>Το αίτημα προς την υπηρεσία ομιλίας δεν έγινε. Έλεγξε το κλειδί API και τη διεύθυνση της υπηρεσίας στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>speech service</source>
        <translation>υπηρεσία ομιλίας</translation>
    </message>
    <message>
        <source>update server</source>
        <translation>διακομιστής ενημερώσεων</translation>
    </message>
    <message>
        <source>The {server} could not be found. Check your internet connection and try again.</source>
        <translation>Δεν βρέθηκε: {server}. Έλεγξε τη σύνδεση στο διαδίκτυο και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The {server} could not be reached. The connection was refused.</source>
        <translation>Δεν ήταν δυνατή η πρόσβαση: {server}. Η σύνδεση απορρίφθηκε.</translation>
    </message>
    <message>
        <source>The {server} could not be reached. Check your internet connection and try again.</source>
        <translation>Δεν ήταν δυνατή η πρόσβαση: {server}. Έλεγξε τη σύνδεση στο διαδίκτυο και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The {server} did not answer in time. Please try again.</source>
        <translation>Δεν υπήρξε έγκαιρη απάντηση: {server}. Δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The {server} could not be trusted. Its certificate is not valid.</source>
        <translation>Δεν είναι αξιόπιστο: {server}. Το πιστοποιητικό δεν είναι έγκυρο.</translation>
    </message>
    <message>
        <source>The {server} could not be trusted. The certificates of this computer could not be read.</source>
        <translation>Δεν είναι αξιόπιστο: {server}. Τα πιστοποιητικά αυτού του υπολογιστή δεν διαβάστηκαν.</translation>
    </message>
    <message>
        <source>A secure connection to the {server} could not be made. Please try again.</source>
        <translation>Δεν έγινε ασφαλής σύνδεση: {server}. Δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The connection to the {server} was lost. Please try again.</source>
        <translation>Η σύνδεση χάθηκε: {server}. Δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>Learning in {app}. Correct a spelling, then pause for two seconds.</source>
        <translation>Μάθηση σε: {app}. Διόρθωσε μια γραφή και περίμενε δύο δευτερόλεπτα.</translation>
    </message>
    <message>
        <source>Checking automatic learning in {app}…</source>
        <translation>Έλεγχος αυτόματης μάθησης σε: {app}…</translation>
    </message>
    <message>
        <source>Could not verify readable text in {app}. Use Remember correction for this dictation.</source>
        <translation>Δεν επιβεβαιώθηκε αναγνώσιμο κείμενο σε: {app}. Χρησιμοποίησε «Απομνημόνευση διόρθωσης» για αυτή την υπαγόρευση.</translation>
    </message>
    <message>
        <source>Could not read the final edit in {app}. Use Remember correction.</source>
        <translation>Η τελική αλλαγή δεν διαβάστηκε σε: {app}. Χρησιμοποίησε «Απομνημόνευση διόρθωσης».</translation>
    </message>
    <message>
        <source>The test pasted, but automatic learning could not attach to this editor.</source>
        <translation>Το δείγμα επικολλήθηκε, αλλά η αυτόματη μάθηση δεν λειτουργεί σε αυτόν τον επεξεργαστή.</translation>
    </message>
    <message>
        <source>Automatic learning needs a verified paste. Use Remember correction for this copied transcript.</source>
        <translation>Η αυτόματη μάθηση χρειάζεται επιβεβαιωμένη επικόλληση. Χρησιμοποίησε «Απομνημόνευση διόρθωσης» για αυτό το κείμενο.</translation>
    </message>
    <message>
        <source>The surrounding text changed. Use Remember correction for this edit.</source>
        <translation>Το γύρω κείμενο άλλαξε. Χρησιμοποίησε «Απομνημόνευση διόρθωσης» για αυτή την αλλαγή.</translation>
    </message>
    <message>
        <source>The field was cleared before a correction was saved.</source>
        <translation>Το πεδίο άδειασε πριν αποθηκευτεί διόρθωση.</translation>
    </message>
    <message>
        <source>No spelling change was detected in the last dictation.</source>
        <translation>Δεν εντοπίστηκε αλλαγή γραφής στην τελευταία υπαγόρευση.</translation>
    </message>
    <message>
        <source>This edit needs a manual rule. Choose Remember correction.</source>
        <translation>Αυτή η αλλαγή θέλει δικό σου κανόνα. Διάλεξε «Απομνημόνευση διόρθωσης».</translation>
    </message>
    <message>
        <source>Remembered: {rule}</source>
        <translation>Απομνημονεύτηκε: {rule}</translation>
    </message>
    <message>
        <source>This correction is already saved.</source>
        <translation>Αυτή η διόρθωση είναι ήδη αποθηκευμένη.</translation>
    </message>
    <message>
        <source>An existing rule controls this phrase. Edit or enable it in the list below.</source>
        <translation>Για τη φράση ισχύει ήδη κανόνας. Επεξεργάσου τον ή ενεργοποίησέ τον στη λίστα παρακάτω.</translation>
    </message>
    <message>
        <source>Your API key is unavailable. Add it again in Settings.</source>
        <translation>Το κλειδί API δεν είναι διαθέσιμο. Πρόσθεσέ το ξανά στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>Could not save your API key to Keychain ({status}).</source>
        <translation>Το κλειδί API δεν αποθηκεύτηκε στην κλειδοθήκη ({status}).</translation>
    </message>
    <message>
        <source>Could not update iCloud Keychain ({status}).</source>
        <translation>Το αντίγραφο για συγχρονισμό στην κλειδοθήκη δεν ενημερώθηκε ({status}).</translation>
    </message>
    <message>
        <source>Could not remove the key from Keychain ({status}).</source>
        <translation>Το κλειδί δεν αφαιρέθηκε από την κλειδοθήκη ({status}).</translation>
    </message>
    <message>
        <source>Could not remove the iCloud Keychain copy ({status}).</source>
        <translation>Το αντίγραφο για συγχρονισμό δεν αφαιρέθηκε από την κλειδοθήκη ({status}).</translation>
    </message>
    <message>
        <source>Install Quorvi before you have it start when you sign in.</source>
        <translation>Εγκατάστησε το Quorvi πριν το βάλεις να ξεκινά στη σύνδεση.</translation>
    </message>
    <message>
        <source>This desktop has no settings for programs that start when you sign in.</source>
        <translation>Αυτό το περιβάλλον δεν έχει ρυθμίσεις για προγράμματα που ξεκινούν στη σύνδεση.</translation>
    </message>
    <message>
        <source>Connecting to iCloud…</source>
        <translation>Σύνδεση…</translation>
    </message>
    <message>
        <source>Checking Apple Account…</source>
        <translation>Έλεγχος πρόσβασης…</translation>
    </message>
    <message>
        <source>Syncing with iCloud…</source>
        <translation>Συγχρονισμός…</translation>
    </message>
    <message>
        <source>Up to date with iCloud</source>
        <translation>Συγχρονισμένο</translation>
    </message>
    <message>
        <source>{count} changes waiting to sync</source>
        <translation>{count} αλλαγές περιμένουν συγχρονισμό</translation>
    </message>
    <message>
        <source>Sign in to iCloud in System Settings to sync.</source>
        <translation>Ο συγχρονισμός δεν έχει πρόσβαση. Διάλεξε φάκελο, ή έλεγξε τη διεύθυνση του διακομιστή και αποθήκευσε τον κωδικό του.</translation>
    </message>
    <message>
        <source>Sync is unavailable. Your changes are saved on this Mac.</source>
        <translation>Ο συγχρονισμός δεν είναι διαθέσιμος. Οι αλλαγές σου είναι αποθηκευμένες σε αυτόν τον υπολογιστή.</translation>
    </message>
    <message>
        <source>Offline — changes will sync when you reconnect.</source>
        <translation>Χωρίς σύνδεση — οι αλλαγές θα συγχρονιστούν όταν συνδεθείς ξανά.</translation>
    </message>
    <message>
        <source>iCloud access is unavailable for this build ({code}).</source>
        <translation>Ο συγχρονισμός δεν έχει πρόσβαση ({code}). Έλεγξε τη διεύθυνση του φακέλου ή διακομιστή και τα δικαιώματά σου εκεί.</translation>
    </message>
    <message>
        <source>iCloud storage is full. Your changes are saved on this Mac.</source>
        <translation>Ο κοινόχρηστος φάκελος ή διακομιστής γέμισε. Οι αλλαγές σου είναι αποθηκευμένες σε αυτόν τον υπολογιστή.</translation>
    </message>
    <message>
        <source>iCloud will retry. Your changes are saved on this Mac ({code}).</source>
        <translation>Ο συγχρονισμός θα ξαναδοκιμάσει. Οι αλλαγές σου είναι αποθηκευμένες σε αυτόν τον υπολογιστή ({code}).</translation>
    </message>
    <message>
        <source>Sync data could not be read. Your local data is untouched.</source>
        <translation>Τα δεδομένα συγχρονισμού δεν διαβάστηκαν. Τα τοπικά σου δεδομένα είναι ανέπαφα.</translation>
    </message>
    <message>
        <source>Sync paused: changes could not be saved to this Mac. Check disk space and restart Quorvi.</source>
        <translation>Ο συγχρονισμός διακόπηκε: οι αλλαγές δεν αποθηκεύτηκαν σε αυτόν τον υπολογιστή. Έλεγξε τον χώρο στον δίσκο και ξεκίνα ξανά το Quorvi.</translation>
    </message>
    <message>
        <source>Sync paused: iCloud data was reset. Local data has been preserved.</source>
        <translation>Ο συγχρονισμός διακόπηκε: τα κοινά δεδομένα μηδενίστηκαν. Τα τοπικά δεδομένα διατηρήθηκαν.</translation>
    </message>
    <message>
        <source>Sync paused: sign back into the original Apple Account. Data from different accounts stays separate.</source>
        <translation>Ο συγχρονισμός διακόπηκε: αυτός ο φάκελος ή διακομιστής ανήκει τώρα σε άλλον λογαριασμό. Γύρνα στον αρχικό. Τα δεδομένα διαφορετικών λογαριασμών μένουν χωριστά.</translation>
    </message>
    <message>
        <source>Sync paused: the original Apple Account is unavailable.</source>
        <translation>Ο συγχρονισμός διακόπηκε: ο αρχικός φάκελος ή λογαριασμός δεν είναι διαθέσιμος.</translation>
    </message>
    <message>
        <source>This history file was created by a newer version of Quorvi.</source>
        <translation>Το αρχείο ιστορικού δημιουργήθηκε από νεότερη έκδοση του Quorvi.</translation>
    </message>
    <message>
        <source>Updates aren&apos;t configured in this build.</source>
        <translation>Οι ενημερώσεις δεν έχουν ρυθμιστεί σε αυτή την έκδοση.</translation>
    </message>
    <message>
        <source>The system&apos;s installer has Quorvi {version}. When it is done, quit Quorvi and start it again.</source>
        <translation>Το πρόγραμμα εγκατάστασης του συστήματος έχει το Quorvi {version}. Όταν τελειώσει, κλείσε το Quorvi και ξεκίνα το ξανά.</translation>
    </message>
    <message>
        <source>The folder for updates could not be created: {reason}.</source>
        <translation>Ο φάκελος ενημερώσεων δεν δημιουργήθηκε: {reason}.</translation>
    </message>
    <message>
        <source>The update could not be read from the disk.</source>
        <translation>Η ενημέρωση δεν διαβάστηκε από τον δίσκο.</translation>
    </message>
    <message>
        <source>The update could not be saved: {reason}.</source>
        <translation>Η ενημέρωση δεν αποθηκεύτηκε: {reason}.</translation>
    </message>
    <message>
        <source>The update could not be read. It is not a Debian package.</source>
        <translation>Η ενημέρωση δεν διαβάστηκε. Δεν είναι πακέτο Debian.</translation>
    </message>
    <message>
        <source>The update was refused. Its package is not Quorvi&apos;s.</source>
        <translation>Η ενημέρωση απορρίφθηκε. Το πακέτο δεν είναι του Quorvi.</translation>
    </message>
    <message>
        <source>The update was refused. It calls itself Quorvi {version} but is not newer than the Quorvi that is running.</source>
        <translation>Η ενημέρωση απορρίφθηκε. Λέγεται Quorvi {version} αλλά δεν είναι νεότερη από το Quorvi που τρέχει.</translation>
    </message>
    <message>
        <source>The update server redirects to a connection that is not secure.</source>
        <translation>Ο διακομιστής ενημερώσεων οδηγεί σε σύνδεση που δεν είναι ασφαλής.</translation>
    </message>
    <message>
        <source>The update server&apos;s address is not a secure one (https).</source>
        <translation>Η διεύθυνση του διακομιστή ενημερώσεων δεν είναι ασφαλής (https).</translation>
    </message>
    <message>
        <source>The update server redirects without end.</source>
        <translation>Ο διακομιστής ενημερώσεων ανακατευθύνει χωρίς τέλος.</translation>
    </message>
    <message>
        <source>The update server answered with an error (HTTP {status}). Please try again later.</source>
        <translation>Ο διακομιστής ενημερώσεων απάντησε με σφάλμα (HTTP {status}). Δοκίμασε ξανά αργότερα.</translation>
    </message>
    <message>
        <source>The update server answered with something else than asked for (HTTP {status}). Please try again later.</source>
        <translation>Ο διακομιστής ενημερώσεων απάντησε με κάτι άλλο από ό,τι ζητήθηκε (HTTP {status}). Δοκίμασε ξανά αργότερα.</translation>
    </message>
    <message>
        <source>The download is larger than the update feed says. It was refused.</source>
        <translation>Η λήψη είναι μεγαλύτερη από όσο λέει η ροή ενημερώσεων. Απορρίφθηκε.</translation>
    </message>
    <message>
        <source>The download is smaller than the update feed says. It was refused.</source>
        <translation>Η λήψη είναι μικρότερη από όσο λέει η ροή ενημερώσεων. Απορρίφθηκε.</translation>
    </message>
    <message>
        <source>The answer of the update server was too large.</source>
        <translation>Η απάντηση του διακομιστή ενημερώσεων ήταν πολύ μεγάλη.</translation>
    </message>
    <message>
        <source>The update feed could not be read. It is not a feed of releases.</source>
        <translation>Η ροή ενημερώσεων δεν διαβάστηκε. Δεν περιέχει εκδόσεις.</translation>
    </message>
    <message>
        <source>The update feed was refused. It declares a document type, which a feed has no use for.</source>
        <translation>Η ροή ενημερώσεων απορρίφθηκε. Δηλώνει τύπο εγγράφου, που δεν χρειάζεται σε ροή.</translation>
    </message>
    <message>
        <source>The update feed was refused. It is nested too deeply.</source>
        <translation>Η ροή ενημερώσεων απορρίφθηκε. Είναι πολύ βαθιά εμφωλευμένη.</translation>
    </message>
    <message>
        <source>The update feed was refused. It has too many entries.</source>
        <translation>Η ροή ενημερώσεων απορρίφθηκε. Έχει πάρα πολλές καταχωρίσεις.</translation>
    </message>
    <message>
        <source>The update feed was refused. It is too large.</source>
        <translation>Η ροή ενημερώσεων απορρίφθηκε. Είναι πολύ μεγάλη.</translation>
    </message>
    <message>
        <source>This desktop has no program that installs packages. Install it with: sudo apt install {package}</source>
        <translation>Αυτό το περιβάλλον δεν έχει πρόγραμμα εγκατάστασης πακέτων. Εγκατάστησέ το με: sudo apt install {package}</translation>
    </message>
    <message>
        <source>The package installer could not be started. Install it with: sudo apt install {package}</source>
        <translation>Το πρόγραμμα εγκατάστασης δεν ξεκίνησε. Εγκατάστησέ το με: sudo apt install {package}</translation>
    </message>
    <message>
        <source>Quorvi {version} is the newest version.</source>
        <translation>Το Quorvi {version} είναι η νεότερη έκδοση.</translation>
    </message>
    <message>
        <source>Quorvi {version} is available, but it needs version {system} of your system or a later one.</source>
        <translation>Το Quorvi {version} είναι διαθέσιμο, αλλά χρειάζεται έκδοση {system} του συστήματός σου ή νεότερη.</translation>
    </message>
    <message>
        <source>Quorvi {version} was refused. Its signature is not valid.</source>
        <translation>Το Quorvi {version} απορρίφθηκε. Η υπογραφή δεν είναι έγκυρη.</translation>
    </message>
    <message>
        <source>The update server could not be used ({reason}).</source>
        <translation>Ο διακομιστής ενημερώσεων δεν χρησιμοποιήθηκε ({reason}).</translation>
    </message>
    <message>
        <source>&lt;p&gt;The release notes could not be loaded.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Οι σημειώσεις έκδοσης δεν φορτώθηκαν.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Right ⌥</source>
        <translation>Δεξί Alt</translation>
    </message>
    <message>
        <source>Left ⌃</source>
        <translation>Αριστερό Ctrl</translation>
    </message>
    <message>
        <source>Right ⌃</source>
        <translation>Δεξί Ctrl</translation>
    </message>
    <message>
        <source>Key {code}</source>
        <translation>Πλήκτρο {code}</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is incomplete.</source>
        <translation>Το πρόχειρο που παραδόθηκε δεν είναι πλήρες.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is unreadable.</source>
        <translation>Το πρόχειρο που παραδόθηκε δεν διαβάζεται.</translation>
    </message>
    <message>
        <source>The clipboard that was handed over is damaged.</source>
        <translation>Το πρόχειρο που παραδόθηκε είναι κατεστραμμένο.</translation>
    </message>
    <message>
        <source>The folder for recordings, {folder}, is not a folder of your own. Remove it and try again.</source>
        <translation>Ο φάκελος για τις ηχογραφήσεις, {folder}, δεν είναι δικός σου. Αφαίρεσέ τον και δοκίμασε ξανά.</translation>
    </message>
    <message>
        <source>The sound can&apos;t be encoded: {reason}.</source>
        <translation>Ο ήχος δεν μπορεί να κωδικοποιηθεί: {reason}.</translation>
    </message>
    <message>
        <source>The sound is no 16-bit PCM WAV file.</source>
        <translation>Ο ήχος δεν είναι αρχείο WAV με PCM 16 bit.</translation>
    </message>
    <message>
        <source>There is not enough memory to reach the {server}.</source>
        <translation>Δεν υπάρχει αρκετή μνήμη για τη σύνδεση: {server}.</translation>
    </message>
    <message>
        <source>The speech service address is not valid. Enter an address such as https://api.openai.com or leave it empty.</source>
        <translation>Η διεύθυνση της υπηρεσίας ομιλίας δεν είναι έγκυρη. Δώσε μια διεύθυνση όπως https://api.openai.com ή άφησέ την κενή.</translation>
    </message>
    <message>
        <source>A speech service on another computer must be reached over an encrypted connection. Enter an address that begins with https://.</source>
        <translation>Η σύνδεση με υπηρεσία ομιλίας σε άλλον υπολογιστή πρέπει να είναι κρυπτογραφημένη. Δώσε μια διεύθυνση που αρχίζει με https://.</translation>
    </message>
    <message>
        <source>A correction has no valid date and could not be saved.</source>
        <translation>Μια διόρθωση δεν έχει έγκυρη ημερομηνία και δεν ήταν δυνατό να αποθηκευτεί.</translation>
    </message>
    <message>
        <source>There is not enough memory to look for updates.</source>
        <translation>Δεν υπάρχει αρκετή μνήμη για την αναζήτηση ενημερώσεων.</translation>
    </message>
    <message>
        <source>There is not enough memory to read the update feed.</source>
        <translation>Δεν υπάρχει αρκετή μνήμη για την ανάγνωση της ροής ενημερώσεων.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: its address is not a secure one (https).</source>
        <translation>Η λήψη του Quorvi {version} δεν είναι δυνατή: η διεύθυνσή του δεν είναι ασφαλής (https).</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: it is not signed.</source>
        <translation>Η λήψη του Quorvi {version} δεν είναι δυνατή: δεν είναι υπογεγραμμένο.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: the update feed doesn&apos;t say how large it is.</source>
        <translation>Η λήψη του Quorvi {version} δεν είναι δυνατή: η ροή ενημερώσεων δεν αναφέρει το μέγεθός του.</translation>
    </message>
    <message>
        <source>Quorvi {version} can&apos;t be downloaded: it is too large.</source>
        <translation>Η λήψη του Quorvi {version} δεν είναι δυνατή: είναι πολύ μεγάλο.</translation>
    </message>
    <message>
        <source>cloudDatabase: {address} is no address that is known</source>
        <translation>cloudDatabase: Η διεύθυνση {address} δεν είναι γνωστή</translation>
    </message>
    <message>
        <source>cloudDatabase: {address} has no absolute path</source>
        <translation>cloudDatabase: Η διεύθυνση {address} δεν έχει απόλυτη διαδρομή</translation>
    </message>
    <message>
        <source>The address of a PostgreSQL database begins with postgresql://</source>
        <translation>Η διεύθυνση μιας βάσης δεδομένων PostgreSQL αρχίζει με postgresql://</translation>
    </message>
    <message>
        <source>The database address can&apos;t be understood.</source>
        <translation>Η διεύθυνση της βάσης δεδομένων δεν είναι κατανοητή.</translation>
    </message>
    <message>
        <source>The database address must not contain a password. Keep it in the keyring or in ~/.pgpass.</source>
        <translation>Η διεύθυνση της βάσης δεδομένων δεν πρέπει να περιέχει κωδικό πρόσβασης. Φύλαξέ τον στην κλειδοθήκη ή στο ~/.pgpass.</translation>
    </message>
    <message>
        <source>Preferences could not be opened. They have been left untouched; changes last for this session only.</source>
        <translation>Δεν ήταν δυνατό το άνοιγμα των προτιμήσεων. Έμειναν άθικτες· οι αλλαγές ισχύουν μόνο για αυτή τη συνεδρία.</translation>
    </message>
    <message>
        <source>Preferences could not be saved on this computer. Check available disk space and folder access.</source>
        <translation>Δεν ήταν δυνατή η αποθήκευση των προτιμήσεων σε αυτόν τον υπολογιστή. Έλεγξε τον διαθέσιμο χώρο στον δίσκο και την πρόσβαση στον φάκελο.</translation>
    </message>
    <message>
        <source>The history could not be read ({reason})</source>
        <translation>Δεν ήταν δυνατή η ανάγνωση του ιστορικού ({reason})</translation>
    </message>
    <message>
        <source>The history could not be written; nothing was changed ({reason})</source>
        <translation>Δεν ήταν δυνατή η εγγραφή του ιστορικού· τίποτα δεν άλλαξε ({reason})</translation>
    </message>
    <message>
        <source>What the synchronisation has kept could not be read ({reason})</source>
        <translation>Δεν ήταν δυνατή η ανάγνωση των δεδομένων συγχρονισμού ({reason})</translation>
    </message>
    <message>
        <source>This file is no export of Quorvi: {reason}.</source>
        <translation>Αυτό το αρχείο δεν είναι εξαγωγή του Quorvi: {reason}.</translation>
    </message>
    <message>
        <source>This export was written by a newer version of Quorvi.</source>
        <translation>Αυτή η εξαγωγή γράφτηκε από νεότερη έκδοση του Quorvi.</translation>
    </message>
    <message>
        <source>{app} did not take the text. It is on the clipboard.</source>
        <translation>{app}: το κείμενο δεν παραλήφθηκε. Βρίσκεται στο πρόχειρο.</translation>
    </message>
    <message>
        <source>The old clipboard could not be kept.</source>
        <translation>Το παλιό πρόχειρο δεν διατηρήθηκε.</translation>
    </message>
    <message>
        <source>Field not checked · {app}</source>
        <translation>Μη ελεγμένο πεδίο · {app}</translation>
    </message>
    <message>
        <source>Your keyring is locked. Unlock it, then dictate again.</source>
        <translation>Η κλειδοθήκη σου είναι κλειδωμένη. Ξεκλείδωσέ την και υπαγόρευσε ξανά.</translation>
    </message>
    <message>
        <source>Your keyring stayed locked, and with it your API key. Dictate again to unlock it.</source>
        <translation>Η κλειδοθήκη σου έμεινε κλειδωμένη και μαζί της το κλειδί API. Υπαγόρευσε ξανά για να την ξεκλειδώσεις.</translation>
    </message>
    <message>
        <source>Enter the address of your speech service in Settings.</source>
        <translation>Γράψε στις Ρυθμίσεις τη διεύθυνση της υπηρεσίας ομιλίας σου.</translation>
    </message>
    <message>
        <source>The offline recogniser is not installed. Install the package quorvi-speech-service.</source>
        <translation>Η αναγνώριση χωρίς δίκτυο δεν είναι εγκατεστημένη. Εγκατάστησε το πακέτο quorvi-speech-service.</translation>
    </message>
    <message>
        <source>The offline recogniser did not start. Try again, or choose another speech service in Settings.</source>
        <translation>Η αναγνώριση χωρίς δίκτυο δεν ξεκίνησε. Δοκίμασε ξανά ή διάλεξε άλλη υπηρεσία ομιλίας στις Ρυθμίσεις.</translation>
    </message>
    <message>
        <source>The speech service answered. It is ready for your dictations.</source>
        <translation>Η υπηρεσία ομιλίας απάντησε. Είναι έτοιμη για τις υπαγορεύσεις σου.</translation>
    </message>
    <message>
        <source>Your microphone is missing · {microphone}</source>
        <translation>Το μικρόφωνό σου λείπει · {microphone}</translation>
    </message>
    <message>
        <source>You can try again for {minutes} minutes.</source>
        <translation>Μπορείς να δοκιμάσεις ξανά για {minutes} λεπτά.</translation>
    </message>
    <message>
        <source>You can try again for one more minute.</source>
        <translation>Μπορείς να δοκιμάσεις ξανά για ένα λεπτό ακόμη.</translation>
    </message>
    <message>
        <source>There is no recording to try again.</source>
        <translation>Δεν υπάρχει ηχογράφηση για νέα δοκιμή.</translation>
    </message>
    <message>
        <source>The recording was discarded.</source>
        <translation>Η ηχογράφηση απορρίφθηκε.</translation>
    </message>
    <message>
        <source>Text sent to {app}.</source>
        <translation>Το κείμενο στάλθηκε σε: {app}.</translation>
    </message>
    <message>
        <source>This desktop reports no lone modifiers; choose a combination.</source>
        <translation>Αυτή η επιφάνεια εργασίας δεν αναφέρει μεμονωμένα πλήκτρα τροποποίησης· διάλεξε έναν συνδυασμό.</translation>
    </message>
    <message>
        <source>This desktop does not report when a key goes up: press the shortcut once to speak, and again to insert the text.</source>
        <translation>Αυτή η επιφάνεια εργασίας δεν αναφέρει πότε αφήνεται ένα πλήκτρο: πάτησε τη συντόμευση μία φορά για να μιλήσεις και ξανά για να εισαχθεί το κείμενο.</translation>
    </message>
    <message>
        <source>The desktop uses this shortcut for “{use}”. Choose another one.</source>
        <translation>Η επιφάνεια εργασίας χρησιμοποιεί αυτή τη συντόμευση για «{use}». Διάλεξε άλλη.</translation>
    </message>
    <message>
        <source>Let Quorvi add the shortcut to the desktop&apos;s settings.</source>
        <translation>Επίτρεψε στο Quorvi να προσθέσει τη συντόμευση στις ρυθμίσεις της επιφάνειας εργασίας.</translation>
    </message>
    <message>
        <source>The desktop has not given the shortcut to Quorvi. Choose another one, or allow it in the desktop&apos;s settings.</source>
        <translation>Η επιφάνεια εργασίας δεν έδωσε τη συντόμευση στο Quorvi. Διάλεξε άλλη ή επίτρεψέ τη στις ρυθμίσεις της.</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Συντόμευση</translation>
    </message>
    <message>
        <source>Text into fields</source>
        <translation>Κείμενο σε πεδία</translation>
    </message>
    <message>
        <source>Pasting</source>
        <translation>Επικόλληση</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>Πρόχειρο</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Παράθυρα</translation>
    </message>
    <message>
        <source>Indicator</source>
        <translation>Ένδειξη</translation>
    </message>
    <message>
        <source>By {interface}.</source>
        <translation>Μέσω {interface}.</translation>
    </message>
    <message>
        <source>Not offered by this desktop: {interfaces}.</source>
        <translation>Δεν προσφέρεται από αυτή την επιφάνεια εργασίας: {interfaces}.</translation>
    </message>
    <message>
        <source>Bind a key of the desktop to “quorvi toggle”.</source>
        <translation>Αντιστοίχισε ένα πλήκτρο της επιφάνειας εργασίας στο «quorvi toggle».</translation>
    </message>
    <message>
        <source>Quorvi pastes instead.</source>
        <translation>Το Quorvi επικολλά αντ’ αυτού.</translation>
    </message>
    <message>
        <source>Where a field takes no text directly, Quorvi leaves it on the clipboard; paste it yourself.</source>
        <translation>Όπου ένα πεδίο δεν δέχεται κείμενο απευθείας, το Quorvi το αφήνει στο πρόχειρο· επικόλλησέ το μόνος σου.</translation>
    </message>
    <message>
        <source>Quorvi uses that of X11 programs.</source>
        <translation>Το Quorvi χρησιμοποιεί αυτό των προγραμμάτων X11.</translation>
    </message>
    <message>
        <source>It is shown by X11, if the desktop runs X11 programs.</source>
        <translation>Εμφανίζεται μέσω X11, αν η επιφάνεια εργασίας εκτελεί προγράμματα X11.</translation>
    </message>
    <message>
        <source>This desktop lacks some of what Quorvi needs: it works only in windows of X11 programs. It works in all windows on sway, KDE Plasma and GNOME, and on desktops with X11.</source>
        <translation>Από αυτή την επιφάνεια εργασίας λείπει κάτι που χρειάζεται το Quorvi: λειτουργεί μόνο σε παράθυρα προγραμμάτων X11. Σε όλα τα παράθυρα λειτουργεί με sway, KDE Plasma και GNOME, καθώς και με X11.</translation>
    </message>
    <message>
        <source>This desktop has no shortcuts for programs. In its settings or configuration, bind a key to the command “quorvi toggle”, and another to “quorvi cancel”.</source>
        <translation>Αυτή η επιφάνεια εργασίας δεν έχει συντομεύσεις για προγράμματα. Στις ρυθμίσεις ή στη διαμόρφωσή της όρισε ένα πλήκτρο για την εντολή «quorvi toggle» και ένα για την «quorvi cancel».</translation>
    </message>
    <message>
        <source>Quorvi presses no keys here until you allow it: “Press keys to paste” in Settings, under “This desktop”.</source>
        <translation>Εδώ το Quorvi δεν πατά πλήκτρα μέχρι να το επιτρέψεις: «Πάτημα πλήκτρων για επικόλληση» στις Ρυθμίσεις, στην ενότητα «Αυτή η επιφάνεια εργασίας».</translation>
    </message>
</context>
<context>
    <name>PrivacySettings</name>
    <message>
        <source>Privacy</source>
        <translation>Απόρρητο</translation>
    </message>
    <message>
        <source>Audio uses your Mac’s default input. Dictations stop at 3 minutes. Local audio files are deleted after recording; retained text history and usage statistics sync through your private iCloud account when enabled. Configure retention above. Cloud processing follows your API account’s data settings.</source>
        <translation>Ο ήχος έρχεται από το μικρόφωνο που έχει οριστεί παραπάνω. Οι υπαγορεύσεις σταματούν στα 3 λεπτά. Τα αρχεία ήχου διαγράφονται μετά την ηχογράφηση· το ιστορικό που διατηρείται και τα στατιστικά συγχρονίζονται μέσω του δικού σου φακέλου ή διακομιστή όταν το ενεργοποιείς. Η διατήρηση ορίζεται παραπάνω. Η επεξεργασία στο cloud ακολουθεί τις ρυθμίσεις δεδομένων του λογαριασμού API.</translation>
    </message>
    <message>
        <source>When Quorvi uses Paste, it briefly places the transcript on the clipboard and then restores it. Clipboard managers may retain a copy.</source>
        <translation>Όταν το Quorvi επικολλά, βάζει για λίγο το κείμενο στο πρόχειρο και μετά το επαναφέρει. Οι διαχειριστές προχείρου ίσως κρατήσουν αντίγραφο.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Μικρόφωνο</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Δίαυλος προσβασιμότητας</translation>
    </message>
    <message>
        <source>Manage</source>
        <translation>Διαχείριση</translation>
    </message>
    <message>
        <source>Manage %1</source>
        <translation>Διαχείριση: %1</translation>
    </message>
    <message>
        <source>%1: allowed</source>
        <translation>%1: επιτρέπεται</translation>
    </message>
    <message>
        <source>%1: not allowed</source>
        <translation>%1: δεν επιτρέπεται</translation>
    </message>
    <message>
        <source>Keep a failed recording in memory for ten minutes</source>
        <translation>Διατήρηση αποτυχημένης ηχογράφησης στη μνήμη για δέκα λεπτά</translation>
    </message>
    <message>
        <source>If the speech service or the network fails, you can try again instead of dictating anew. The recording is never written to a disk, and gone when the screen is locked.</source>
        <translation>Αν αποτύχει η υπηρεσία ομιλίας ή το δίκτυο, μπορείς να δοκιμάσεις ξανά αντί να υπαγορεύσεις από την αρχή. Η ηχογράφηση δεν γράφεται ποτέ σε δίσκο και χάνεται μόλις κλειδωθεί η οθόνη.</translation>
    </message>
</context>
<context>
    <name>RecognitionSettings</name>
    <message>
        <source>Recognition</source>
        <translation>Αναγνώριση</translation>
    </message>
    <message>
        <source>Language is detected automatically. Speak naturally in any supported language; your words stay in their original language.</source>
        <translation>Η γλώσσα αναγνωρίζεται αυτόματα. Μίλα φυσικά σε όποια υποστηριζόμενη γλώσσα· τα λόγια σου μένουν στη γλώσσα τους.</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Μοντέλο</translation>
    </message>
    <message>
        <source>Recognition accuracy varies with the recording and model.</source>
        <translation>Η ακρίβεια εξαρτάται από την ηχογράφηση και το μοντέλο.</translation>
    </message>
    <message>
        <source>Names or terms you often use (optional)</source>
        <translation>Ονόματα ή όροι που χρησιμοποιείς συχνά (προαιρετικά)</translation>
    </message>
</context>
<context>
    <name>RecordingAppearanceSettings</name>
    <message>
        <source>Style</source>
        <translation>Στιλ</translation>
    </message>
    <message>
        <source>Preview · microphone off</source>
        <translation>Προεπισκόπηση · μικρόφωνο κλειστό</translation>
    </message>
    <message>
        <source>Dictating into Text Editor</source>
        <translation>Υπαγόρευση σε: Κειμενογράφος</translation>
    </message>
</context>
<context>
    <name>RecordingHUD</name>
    <message>
        <source>Esc to cancel</source>
        <translation>Esc για ακύρωση</translation>
    </message>
    <message>
        <source>Quorvi dictation</source>
        <translation>Υπαγόρευση Quorvi</translation>
    </message>
    <message>
        <source>Recording time</source>
        <translation>Χρόνος ηχογράφησης</translation>
    </message>
    <message>
        <source>Copy transcript</source>
        <translation>Αντιγραφή κειμένου</translation>
    </message>
    <message numerus="yes">
        <source>%1 seconds</source>
        <translation>
            <numerusform>%1 δευτερόλεπτο</numerusform>
            <numerusform>%1 δευτερόλεπτα</numerusform>
        </translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Ενημέρωση %1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Ξανά</translation>
    </message>
</context>
<context>
    <name>RecordingPanel</name>
    <message>
        <source>Quorvi dictation</source>
        <translation>Υπαγόρευση Quorvi</translation>
    </message>
</context>
<context>
    <name>RememberCorrectionButton</name>
    <message>
        <source>Remember correction</source>
        <translation>Απομνημόνευση διόρθωσης</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>SET UP YOUR FLOW</source>
        <translation>ΣΤΗΣΕ ΤΟΝ ΤΡΟΠΟ ΣΟΥ</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ρυθμίσεις</translation>
    </message>
    <message>
        <source>Recording appearance</source>
        <translation>Εμφάνιση ηχογράφησης</translation>
    </message>
    <message>
        <source>Search settings</source>
        <translation>Αναζήτηση στις ρυθμίσεις</translation>
    </message>
    <message>
        <source>Clear search</source>
        <translation>Καθαρισμός αναζήτησης</translation>
    </message>
    <message>
        <source>No setting matches.</source>
        <translation>Καμία ρύθμιση δεν ταιριάζει.</translation>
    </message>
    <message numerus="yes">
        <source>%n sections match. Enter goes to the next match.</source>
        <translation>
            <numerusform>Ταιριάζει %n ενότητα. Το Enter πηγαίνει στο επόμενο σημείο.</numerusform>
            <numerusform>Ταιριάζουν %n ενότητες. Το Enter πηγαίνει στο επόμενο σημείο.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SetupCard</name>
    <message>
        <source>Make it yours</source>
        <translation>Κάν’ το δικό σου</translation>
    </message>
    <message>
        <source>ONE-TIME SETUP</source>
        <translation>ΡΥΘΜΙΣΗ ΜΙΑ ΦΟΡΑ</translation>
    </message>
    <message>
        <source>SET UP YOUR FLOW</source>
        <translation>ΣΤΗΣΕ ΤΟΝ ΤΡΟΠΟ ΣΟΥ</translation>
    </message>
    <message>
        <source>OpenAI API key</source>
        <translation>Κλειδί API του OpenAI</translation>
    </message>
    <message>
        <source>Stored securely in your Mac’s Keychain</source>
        <translation>Φυλάσσεται με ασφάλεια στην κλειδοθήκη σου</translation>
    </message>
    <message>
        <source>Add key</source>
        <translation>Προσθήκη κλειδιού</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Μικρόφωνο</translation>
    </message>
    <message>
        <source>Record only while you dictate</source>
        <translation>Ηχογράφηση μόνο όσο υπαγορεύεις</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>Ενεργοποίηση</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Προσβασιμότητα</translation>
    </message>
    <message>
        <source>Use your shortcut and insert text</source>
        <translation>Ο δίαυλος προσβασιμότητας λέει στο Quorvi σε ποιο πεδίο γράφεις</translation>
    </message>
    <message>
        <source>Enable keyboard access in Input Monitoring</source>
        <translation>Πρόσβαση στο πληκτρολόγιο</translation>
    </message>
    <message>
        <source>If access is already enabled, quit and reopen Quorvi.</source>
        <translation>Η συντόμευση χρειάζεται την προσβασιμότητα και X11. Αν αυτό παραμένει, το «quorvi doctor» σε τερματικό λέει γιατί.</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Έτοιμο</translation>
    </message>
    <message>
        <source>Use the offline recogniser</source>
        <translation>Χρήση αναγνώρισης χωρίς δίκτυο</translation>
    </message>
    <message>
        <source>Speech service</source>
        <translation>Υπηρεσία ομιλίας</translation>
    </message>
    <message>
        <source>Offline on this computer, where no key is needed</source>
        <translation>Χωρίς δίκτυο σε αυτόν τον υπολογιστή, όπου δεν χρειάζεται κλειδί</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Άνοιγμα ρυθμίσεων</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Συντόμευση</translation>
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
        <translation>Διάστημα</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Backspace</translation>
    </message>
    <message>
        <source>Enter (keypad)</source>
        <translation>Enter (αριθμητικό)</translation>
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
        <translation>Αριστερό βέλος</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Δεξί βέλος</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Κάτω βέλος</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Πάνω βέλος</translation>
    </message>
    <message>
        <source>Right Alt (AltGr)</source>
        <translation>Δεξί Alt (AltGr)</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Pages</source>
        <translation>Σελίδες</translation>
    </message>
    <message>
        <source>Dictation</source>
        <translation>Υπαγόρευση</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Ιστορικό</translation>
    </message>
    <message>
        <source>Insights</source>
        <translation>Στοιχεία χρήσης</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ρυθμίσεις</translation>
    </message>
    <message>
        <source>Your voice, in your words.</source>
        <translation>Η φωνή σου, με τα λόγια σου.</translation>
    </message>
    <message>
        <source>Automatic language</source>
        <translation>Αυτόματη γλώσσα</translation>
    </message>
    <message>
        <source>Quorvi %1 · Native for Mac</source>
        <translation>Quorvi %1 · Για Linux</translation>
    </message>
    <message>
        <source>Sections</source>
        <translation>Ενότητες</translation>
    </message>
    <message>
        <source>Section: %1</source>
        <translation>Ενότητα: %1</translation>
    </message>
</context>
<context>
    <name>SpeechServiceSettings</name>
    <message>
        <source>Speech service</source>
        <translation>Υπηρεσία ομιλίας</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Δοκιμή</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
    <message>
        <source>OpenAI</source>
        <translation>OpenAI</translation>
    </message>
    <message>
        <source>Another service</source>
        <translation>Άλλη υπηρεσία</translation>
    </message>
    <message>
        <source>Offline (English)</source>
        <translation>Χωρίς δίκτυο (αγγλικά)</translation>
    </message>
    <message>
        <source>Turns speech into text</source>
        <translation>Κάνει την ομιλία κείμενο</translation>
    </message>
    <message>
        <source>Test the speech service</source>
        <translation>Δοκιμή της υπηρεσίας ομιλίας</translation>
    </message>
    <message>
        <source>Cancel the test</source>
        <translation>Ακύρωση της δοκιμής</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Διεύθυνση</translation>
    </message>
    <message>
        <source>Model (optional)</source>
        <translation>Μοντέλο (προαιρετικό)</translation>
    </message>
    <message>
        <source>As the service calls it</source>
        <translation>Όπως το ονομάζει η υπηρεσία</translation>
    </message>
    <message>
        <source>The service needs an API key</source>
        <translation>Η υπηρεσία χρειάζεται κλειδί API</translation>
    </message>
    <message>
        <source>The environment variable QUORVI_SERVICE sets it to %1 until Quorvi is started without that variable.</source>
        <translation>Η μεταβλητή περιβάλλοντος QUORVI_SERVICE την ορίζει σε %1, ώσπου το Quorvi να ξεκινήσει χωρίς αυτή τη μεταβλητή.</translation>
    </message>
    <message>
        <source>Recordings go to api.openai.com with your API key.</source>
        <translation>Οι ηχογραφήσεις πηγαίνουν στο api.openai.com με το κλειδί API σου.</translation>
    </message>
    <message>
        <source>A service with the interface of OpenAI&apos;s speech-to-text API: your own server, or that of another provider. Its key is kept apart from the others.</source>
        <translation>Μια υπηρεσία με τη διεπαφή μετατροπής ομιλίας σε κείμενο της OpenAI: ο δικός σου διακομιστής ή άλλου παρόχου. Το κλειδί της φυλάσσεται χωριστά από τα άλλα.</translation>
    </message>
    <message>
        <source>Recordings stay on this computer, and no key is needed. English only, and good for short sentences. The recogniser runs while you dictate and five minutes longer.</source>
        <translation>Οι ηχογραφήσεις μένουν σε αυτόν τον υπολογιστή και δεν χρειάζεται κλειδί. Μόνο αγγλικά, καλό για σύντομες προτάσεις. Η αναγνώριση τρέχει όσο υπαγορεύεις και πέντε λεπτά ακόμη.</translation>
    </message>
    <message>
        <source>Waiting for the service…</source>
        <translation>Αναμονή για την υπηρεσία…</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>In progress</source>
        <translation>Σε εξέλιξη</translation>
    </message>
</context>
<context>
    <name>StatusCard</name>
    <message>
        <source>Automatic language detection</source>
        <translation>Αυτόματη αναγνώριση γλώσσας</translation>
    </message>
    <message>
        <source>Click a text field in any app, then use your shortcut. You can close this window; Quorvi keeps running in the menu bar.</source>
        <translation>Κάνε κλικ σε πεδίο κειμένου οποιασδήποτε εφαρμογής και χρησιμοποίησε τη συντόμευση. Μπορείς να κλείσεις αυτό το παράθυρο· το Quorvi συνεχίζει στην περιοχή ειδοποιήσεων.</translation>
    </message>
    <message>
        <source>Recording time</source>
        <translation>Χρόνος ηχογράφησης</translation>
    </message>
    <message>
        <source>Stop &amp;&amp; insert</source>
        <translation>Τέλος &amp;&amp; εισαγωγή</translation>
    </message>
    <message>
        <source>Stop &amp; insert</source>
        <translation>Τέλος &amp; εισαγωγή</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
    <message>
        <source>Change shortcut</source>
        <translation>Αλλαγή συντόμευσης</translation>
    </message>
    <message>
        <source>Keep the shortcut</source>
        <translation>Διατήρηση της συντόμευσης</translation>
    </message>
    <message>
        <source>Click a text field in another app during the 10-second countdown. Quorvi will paste a short sample without recording or an API request.</source>
        <translation>Κάνε κλικ σε πεδίο κειμένου άλλης εφαρμογής στα 10 δευτερόλεπτα της αντίστροφης μέτρησης. Το Quorvi θα επικολλήσει σύντομο δείγμα χωρίς ηχογράφηση και χωρίς αίτημα στο API.</translation>
    </message>
    <message>
        <source>Test paste</source>
        <translation>Δοκιμή επικόλλησης</translation>
    </message>
    <message>
        <source>Cancel test</source>
        <translation>Ακύρωση δοκιμής</translation>
    </message>
    <message>
        <source>Ready when you are</source>
        <translation>Έτοιμο όταν είσαι κι εσύ</translation>
    </message>
    <message>
        <source>Complete setup to start</source>
        <translation>Ολοκλήρωσε τη ρύθμιση για να ξεκινήσεις</translation>
    </message>
    <message>
        <source>Press the new shortcut. Esc keeps %1.</source>
        <translation>Πάτησε τη νέα συντόμευση. Με Esc μένει: %1.</translation>
    </message>
    <message>
        <source>Shortcut: %1</source>
        <translation>Συντόμευση: %1</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Ξανά</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Απόρριψη</translation>
    </message>
    <message>
        <source>Discard the recording</source>
        <translation>Απόρριψη της ηχογράφησης</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Quorvi — multilingual dictation</source>
        <translation>Quorvi — πολύγλωσση υπαγόρευση</translation>
    </message>
    <message>
        <source>Stop &amp; insert</source>
        <translation>Τέλος &amp; εισαγωγή</translation>
    </message>
    <message>
        <source>Cancel dictation</source>
        <translation>Ακύρωση υπαγόρευσης</translation>
    </message>
    <message>
        <source>Open Quorvi…</source>
        <translation>Άνοιγμα του Quorvi…</translation>
    </message>
    <message>
        <source>History…</source>
        <translation>Ιστορικό…</translation>
    </message>
    <message>
        <source>Insights…</source>
        <translation>Στοιχεία χρήσης…</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Ρυθμίσεις…</translation>
    </message>
    <message>
        <source>Copy last transcript</source>
        <translation>Αντιγραφή τελευταίου κειμένου</translation>
    </message>
    <message>
        <source>Reset dictation</source>
        <translation>Επαναφορά υπαγόρευσης</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Έλεγχος για ενημερώσεις…</translation>
    </message>
    <message>
        <source>Quit Quorvi</source>
        <translation>Τερματισμός του Quorvi</translation>
    </message>
    <message>
        <source>Restore my clipboard</source>
        <translation>Επαναφορά του προχείρου μου</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Ξανά</translation>
    </message>
</context>
<context>
    <name>TranscriptCard</name>
    <message>
        <source>Last transcript</source>
        <translation>Τελευταίο κείμενο</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Αντιγραφή</translation>
    </message>
    <message>
        <source>Clear transcript</source>
        <translation>Καθαρισμός κειμένου</translation>
    </message>
    <message>
        <source>This copy stays until Quorvi quits. Saved dictations are in History.</source>
        <translation>Αυτό το αντίγραφο μένει μέχρι να κλείσει το Quorvi. Οι αποθηκευμένες υπαγορεύσεις είναι στο Ιστορικό.</translation>
    </message>
</context>
<context>
    <name>TrayNotice</name>
    <message>
        <source>This desktop shows no tray icons. Quorvi keeps running when you close this window; start it again to come back here.</source>
        <translation>Αυτό το περιβάλλον δεν δείχνει εικονίδια συστήματος. Το Quorvi συνεχίζει όταν κλείσεις αυτό το παράθυρο· ξεκίνησέ το ξανά για να επιστρέψεις εδώ.</translation>
    </message>
    <message>
        <source>Quit Quorvi</source>
        <translation>Τερματισμός του Quorvi</translation>
    </message>
</context>
<context>
    <name>TryItCard</name>
    <message>
        <source>Try it here</source>
        <translation>Δοκίμασέ το εδώ</translation>
    </message>
    <message>
        <source>CLICK BELOW, THEN DICTATE</source>
        <translation>ΚΑΝΕ ΚΛΙΚ ΚΑΤΩ ΚΑΙ ΥΠΑΓΟΡΕΥΣΕ</translation>
    </message>
    <message>
        <source>Dictation test field</source>
        <translation>Πεδίο δοκιμής υπαγόρευσης</translation>
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
        <translation>Ενημερώσεις εφαρμογής</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>Αυτόματος έλεγχος για ενημερώσεις</translation>
    </message>
    <message>
        <source>New releases are downloaded securely. Quorvi will ask before installing and relaunching.</source>
        <translation>Οι νέες εκδόσεις κατεβαίνουν με ασφάλεια. Το Quorvi θα ρωτήσει πριν εγκαταστήσει και ξεκινήσει ξανά.</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Έλεγχος για ενημερώσεις…</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Quorvi Updates</source>
        <translation>Ενημερώσεις του Quorvi</translation>
    </message>
    <message>
        <source>Release notes</source>
        <translation>Σημειώσεις έκδοσης</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Πρόοδος</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Ακύρωση</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Λήψη</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Αργότερα</translation>
    </message>
    <message>
        <source>Install…</source>
        <translation>Εγκατάσταση…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Κλείσιμο</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 από %2</translation>
    </message>
    <message>
        <source>Verifying its signature…</source>
        <translation>Έλεγχος της υπογραφής…</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Έλεγχος για ενημερώσεις…</translation>
    </message>
    <message>
        <source>No update available</source>
        <translation>Δεν υπάρχει ενημέρωση</translation>
    </message>
    <message>
        <source>Quorvi %1 is available</source>
        <translation>Το Quorvi %1 είναι διαθέσιμο</translation>
    </message>
    <message>
        <source>Downloading Quorvi %1…</source>
        <translation>Λήψη του Quorvi %1…</translation>
    </message>
    <message>
        <source>Quorvi %1 is ready to install</source>
        <translation>Το Quorvi %1 είναι έτοιμο για εγκατάσταση</translation>
    </message>
    <message>
        <source>Opening the installer…</source>
        <translation>Άνοιγμα του προγράμματος εγκατάστασης…</translation>
    </message>
    <message>
        <source>The installer is open</source>
        <translation>Το πρόγραμμα εγκατάστασης είναι ανοιχτό</translation>
    </message>
    <message>
        <source>Quorvi %1 was not installed</source>
        <translation>Το Quorvi %1 δεν εγκαταστάθηκε</translation>
    </message>
    <message>
        <source>Can&apos;t look for updates</source>
        <translation>Ο έλεγχος για ενημερώσεις δεν γίνεται</translation>
    </message>
    <message>
        <source>You have Quorvi %1.</source>
        <translation>Έχεις το Quorvi %1.</translation>
    </message>
    <message>
        <source>Its signature has been verified. Your system&apos;s package installer will open, and may ask for your password.</source>
        <translation>Η υπογραφή ελέγχθηκε. Θα ανοίξει το πρόγραμμα εγκατάστασης του συστήματός σου και ίσως ζητήσει τον κωδικό σου.</translation>
    </message>
</context>
<context>
    <name>UsageCostSection</name>
    <message>
        <source>No completed dictations in this period.</source>
        <translation>Καμία ολοκληρωμένη υπαγόρευση σε αυτή την περίοδο.</translation>
    </message>
    <message>
        <source>Estimated API cost</source>
        <translation>Εκτιμώμενο κόστος API</translation>
    </message>
    <message>
        <source>OpenAI pricing ↗</source>
        <translation>Τιμές του OpenAI ↗</translation>
    </message>
    <message>
        <source>Cost period</source>
        <translation>Περίοδος κόστους</translation>
    </message>
    <message>
        <source>Estimate before tax for completed dictations in your Quorvi history, including synced Macs. Deleted dictations, failed or cancelled requests, and usage in other apps are excluded. Actual charges may differ.</source>
        <translation>Εκτίμηση προ φόρων για ολοκληρωμένες υπαγορεύσεις στο ιστορικό σου, και από συγχρονισμένους υπολογιστές. Δεν περιλαμβάνονται διαγραμμένες υπαγορεύσεις, αποτυχημένα ή ακυρωμένα αιτήματα και η χρήση σε άλλες εφαρμογές. Οι πραγματικές χρεώσεις ίσως διαφέρουν.</translation>
    </message>
</context>
</TS>
