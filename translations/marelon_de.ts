<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>Marelon</name>
    <message>
        <extracomment>Commands, toolbar buttons and help menu</extracomment>
        <source>Tool Data</source>
        <translation>Werkzeugdaten</translation>
    </message>
    <message>
        <source>Sets tool shift and spindle rotation.</source>
        <translation>Setzt Werkzeugversatz und Spindeldrehrichtung.</translation>
    </message>
    <message>
        <source>Data Page</source>
        <translation>Datenblatt</translation>
    </message>
    <message>
        <source>Generates data page settings for Marelon Swiss-style lathes.</source>
        <translation>Erzeugt die Datenblatteinstellungen für Marelon-Langdrehautomaten.</translation>
    </message>
    <message>
        <source>Masks</source>
        <translation>Masken</translation>
    </message>
    <message>
        <source>Masking Panel</source>
        <translation>Maskierungsfenster</translation>
    </message>
    <message>
        <source>masked</source>
        <translation>maskiert</translation>
    </message>
    <message>
        <source>Mask Graphic Objects</source>
        <translation>Grafikobjekte maskieren</translation>
    </message>
    <message>
        <source>G-Code List</source>
        <translation>G-Code-Liste</translation>
    </message>
    <message>
        <source>Display Help about G codes</source>
        <translation>Hilfe zu G-Codes anzeigen</translation>
    </message>
    <message>
        <source>Marelon G-Code Help</source>
        <translation>Marelon G-Code-Hilfe</translation>
    </message>
    <message>
        <source>Marelon Add-In Help</source>
        <translation>Marelon Add-In-Hilfe</translation>
    </message>
    <message>
        <source>Orders the operations and rebuilds the main and back spindle synchronisations.</source>
        <translation>Ordnet die Arbeitsgänge und erstellt die Synchronisationen von Haupt- und Gegenspindel neu.</translation>
    </message>
    <message>
        <source>Auto Sync</source>
        <translation>Auto-Sync</translation>
    </message>
    <message>
        <extracomment>Simulation and technology parameter labels</extracomment>
        <source>Z2 Position</source>
        <translation>Z2-Position</translation>
    </message>
    <message>
        <source>M32- Position X</source>
        <translation>M32- Position X</translation>
    </message>
    <message>
        <source>M32- Position Z</source>
        <translation>M32- Position Z</translation>
    </message>
    <message>
        <source>M34- 0:Basket 1:Clamp</source>
        <translation>M34- 0:Korb 1:Klemmung</translation>
    </message>
    <message>
        <source>M34- Pickup Location(A)</source>
        <translation>M34- Übernahmeposition(A)</translation>
    </message>
    <message>
        <source>M34- Pull Back(B)</source>
        <translation>M34- Rückzug(B)</translation>
    </message>
    <message>
        <source>M34- Ejecting Distance(W)</source>
        <translation>M34- Auswerfweg(W)</translation>
    </message>
    <message>
        <source>Collet Extension</source>
        <translation>Spannzangenüberstand</translation>
    </message>
    <message>
        <source>G76- Pull Out Dist.(%)</source>
        <translation>G76- Ausfahrweg(%)</translation>
    </message>
    <message>
        <source>G76- Minimum Depth</source>
        <translation>G76- Minimale Schnitttiefe</translation>
    </message>
    <message>
        <source>15=M15 ; 16=M16</source>
        <translation>15=M15 ; 16=M16</translation>
    </message>
    <message>
        <source>G79- Dwell At Retract</source>
        <translation>G79- Verweilzeit beim Rückzug</translation>
    </message>
    <message>
        <source>G201- H Value</source>
        <translation>G201- H-Wert</translation>
    </message>
    <message>
        <extracomment>Work planes</extracomment>
        <source>Turning</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Cross Gang</source>
        <translation>Kamm quer</translation>
    </message>
    <message>
        <source>Back Face</source>
        <translation>Stirnseite hinten</translation>
    </message>
    <message>
        <source>Cross Turret</source>
        <translation>Revolver quer</translation>
    </message>
    <message>
        <source>Front Face</source>
        <translation>Stirnseite vorn</translation>
    </message>
    <message>
        <extracomment>NC-code warning</extracomment>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Marelon users should run the Tool Data Settings and Data Page functions prior to creating NC code.</source>
        <translation>Marelon-Anwender sollten vor dem Erzeugen des NC-Codes die Funktionen Werkzeugdaten und Datenblatt ausführen.</translation>
    </message>
    <message>
        <source>DO YOU WISH TO CONTINUE?</source>
        <translation>MÖCHTEN SIE FORTFAHREN?</translation>
    </message>
    <message>
        <source>Don't show me this again.</source>
        <translation>Diese Meldung nicht mehr anzeigen.</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <extracomment>Tool Data and the holder library</extracomment>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Machine Name</source>
        <translation>Maschinenname</translation>
    </message>
    <message>
        <source>Tool Settings</source>
        <translation>Werkzeugeinstellungen</translation>
    </message>
    <message>
        <source>Marelon Holder</source>
        <translation>Marelon-Halter</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Holder Description</source>
        <translation>Halterbeschreibung</translation>
    </message>
    <message>
        <source>Holder</source>
        <translation>Halter</translation>
    </message>
    <message>
        <source>Tool</source>
        <translation>Werkzeug</translation>
    </message>
    <message>
        <source>Feldra</source>
        <translation>Feldra</translation>
    </message>
    <message>
        <source>X Shift</source>
        <translation>X-Versatz</translation>
    </message>
    <message>
        <source>Y Shift</source>
        <translation>Y-Versatz</translation>
    </message>
    <message>
        <source>Z Shift</source>
        <translation>Z-Versatz</translation>
    </message>
    <message>
        <source>Spindle Rot.</source>
        <translation>Drehrichtung</translation>
    </message>
    <message>
        <source>Gear Ratio</source>
        <translation>Übersetzung</translation>
    </message>
    <message>
        <source>To</source>
        <translation>zu</translation>
    </message>
    <message>
        <source>Tool Comment</source>
        <translation>Werkzeugkommentar</translation>
    </message>
    <message>
        <source>Set Data</source>
        <translation>Daten setzen</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Renumber With Station Number</source>
        <translation>Mit Stationsnummer neu nummerieren</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
    </message>
    <message>
        <source>Tool ID</source>
        <translation>Werkzeug-ID</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vorwärts</translation>
    </message>
    <message>
        <source>Reverse</source>
        <translation>Rückwärts</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>n. z.</translation>
    </message>
    <message>
        <source>Tool X Shift</source>
        <translation>Werkzeug X-Versatz</translation>
    </message>
    <message>
        <source>Tool Y Shift</source>
        <translation>Werkzeug Y-Versatz</translation>
    </message>
    <message>
        <source>Tool Z Shift</source>
        <translation>Werkzeug Z-Versatz</translation>
    </message>
    <message>
        <source>The file - </source>
        <translation>Die Datei - </translation>
    </message>
    <message>
        <source> - is not installed! This is needed to set the tool holder shift data!</source>
        <translation> - ist nicht installiert! Sie wird zum Setzen der Versatzdaten der Werkzeughalter benötigt!</translation>
    </message>
    <message>
        <source>%1 (shipped with the add-in)</source>
        <translation>%1 (mit dem Add-In ausgeliefert)</translation>
    </message>
    <message>
        <source>%1 (your own copy)</source>
        <translation>%1 (Ihre eigene Kopie)</translation>
    </message>
    <message>
        <source>New Holder</source>
        <translation>Neuer Halter</translation>
    </message>
    <message>
        <source>Edit Holder</source>
        <translation>Halter bearbeiten</translation>
    </message>
    <message>
        <source>Holder Name</source>
        <translation>Haltername</translation>
    </message>
    <message>
        <source>Spindle Rotation</source>
        <translation>Spindeldrehrichtung</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Invalid Expression</source>
        <translation>Ungültiger Ausdruck</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Invalid Holder Name.</source>
        <translation>Ungültiger Haltername.</translation>
    </message>
    <message>
        <source>Quotation mark (</source>
        <translation>Anführungszeichen (</translation>
    </message>
    <message>
        <source>) is not allowed.</source>
        <translation>) ist nicht zulässig.</translation>
    </message>
    <message>
        <source>) is not allowed</source>
        <translation>) ist nicht zulässig</translation>
    </message>
    <message>
        <source>Please enter a Holder Name.</source>
        <translation>Bitte einen Halternamen eingeben.</translation>
    </message>
    <message>
        <source>Gear Ratio 1</source>
        <translation>Übersetzung 1</translation>
    </message>
    <message>
        <source>Gear Ratio 2</source>
        <translation>Übersetzung 2</translation>
    </message>
    <message>
        <source>Invalid Holder Description.</source>
        <translation>Ungültige Halterbeschreibung.</translation>
    </message>
    <message>
        <source>Please enter a Holder Description.</source>
        <translation>Bitte eine Halterbeschreibung eingeben.</translation>
    </message>
    <message>
        <source>Please select a holder before setting the tool data.</source>
        <translation>Bitte vor dem Setzen der Werkzeugdaten einen Halter auswählen.</translation>
    </message>
    <message>
        <source>The holder is no longer in the holder file. Nothing has been changed.</source>
        <translation>Der Halter ist nicht mehr in der Halterdatei. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>The holder file cannot hold these characters: %1</source>
        <translation>Diese Zeichen kann die Halterdatei nicht speichern: %1</translation>
    </message>
    <message>
        <source>Carried over from %1: press Enter in the field to keep it, or type another value</source>
        <translation>Übernommen von %1: Enter im Feld behält den Wert, sonst einen anderen eingeben</translation>
    </message>
    <message>
        <source>Nothing was written. These fields still show a value carried over from another tool:</source>
        <translation>Es wurde nichts geschrieben. Diese Felder zeigen noch einen Wert, der von einem anderen Werkzeug übernommen wurde:</translation>
    </message>
    <message>
        <source>Press Enter in a field to keep its value for %1, or type the tool's own value.</source>
        <translation>Enter in einem Feld übernimmt seinen Wert für %1; sonst den eigenen Wert des Werkzeugs eingeben.</translation>
    </message>
    <message>
        <extracomment>Numeric field validation</extracomment>
        <source>Bad data entered for -</source>
        <translation>Ungültige Eingabe für -</translation>
    </message>
    <message>
        <source>Please enter a numeric value</source>
        <translation>Bitte einen Zahlenwert eingeben</translation>
    </message>
    <message>
        <source>Please enter a numeric value between</source>
        <translation>Zulässig sind Zahlenwerte zwischen</translation>
    </message>
    <message>
        <source>and</source>
        <translation>und</translation>
    </message>
    <message>
        <source>Please enter a numeric value greater than or equal to</source>
        <translation>Zulässig sind Zahlenwerte größer oder gleich</translation>
    </message>
    <message>
        <source>Please enter a numeric value greater than</source>
        <translation>Zulässig sind Zahlenwerte größer als</translation>
    </message>
    <message>
        <source>Please enter a numeric value less than or equal to</source>
        <translation>Zulässig sind Zahlenwerte kleiner oder gleich</translation>
    </message>
    <message>
        <source>Please enter a numeric value less than</source>
        <translation>Zulässig sind Zahlenwerte kleiner als</translation>
    </message>
    <message>
        <extracomment>Data Page: tabs, frames, buttons and messages</extracomment>
        <source>Part Data</source>
        <translation>Teiledaten</translation>
    </message>
    <message>
        <source>Machine Data</source>
        <translation>Maschinendaten</translation>
    </message>
    <message>
        <source>Miscellaneous</source>
        <translation>Sonstiges</translation>
    </message>
    <message>
        <source>Machine Setup</source>
        <translation>Maschineneinrichtung</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>Laden</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>NC Output</source>
        <translation>NC-Ausgabe</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Kommentare</translation>
    </message>
    <message>
        <source>Program Number</source>
        <translation>Programmnummer</translation>
    </message>
    <message>
        <source>Program Name</source>
        <translation>Programmname</translation>
    </message>
    <message>
        <source>Unit for NC Code</source>
        <translation>Einheit für NC-Code</translation>
    </message>
    <message>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>Metric</source>
        <translation>Metrisch</translation>
    </message>
    <message>
        <source>Head</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Head ID</source>
        <translation>Kanal-ID</translation>
    </message>
    <message>
        <source>The part has changed: the Data Page shows its values again. What was typed here and not confirmed with OK is replaced.</source>
        <translation>Das Teil wurde geändert: Das Datenblatt zeigt wieder seine Werte. Was hier eingegeben und nicht mit OK bestätigt wurde, ist ersetzt.</translation>
    </message>
    <message>
        <source>There was an error! Possibly some data is not set properly.</source>
        <translation>Es ist ein Fehler aufgetreten! Möglicherweise sind einige Daten nicht richtig gesetzt.</translation>
    </message>
    <message>
        <source>Machine Setup File not available for this machine</source>
        <translation>Maschineneinrichtungsdatei für diese Maschine nicht vorhanden</translation>
    </message>
    <message>
        <source>The machine setups of this machine cannot be listed.</source>
        <translation>Die Maschineneinrichtungen dieser Maschine können nicht aufgelistet werden.</translation>
    </message>
    <message>
        <extracomment>Data Page: machine parameters</extracomment>
        <source>Bar Stock O.D.</source>
        <translation>Stangen-Außendurchmesser</translation>
    </message>
    <message>
        <source>Tool Positioning Point</source>
        <translation>Werkzeug-Positionierpunkt</translation>
    </message>
    <message>
        <source>Cut Off Tool</source>
        <translation>Abstechwerkzeug</translation>
    </message>
    <message>
        <source>Cut Off Speed</source>
        <translation>Abstechdrehzahl</translation>
    </message>
    <message>
        <source>Cut Off Feed</source>
        <translation>Abstechvorschub</translation>
    </message>
    <message>
        <source>Cut Off End Point</source>
        <translation>Abstech-Endpunkt</translation>
    </message>
    <message>
        <source>Machining Length</source>
        <translation>Bearbeitungslänge</translation>
    </message>
    <message>
        <source>Parts Per/1 Chuck</source>
        <translation>Teile pro Spannung</translation>
    </message>
    <message>
        <source>Pipe ID/Tube ID</source>
        <translation>Rohr-Innendurchmesser</translation>
    </message>
    <message>
        <source>Back Spl Chuck POS</source>
        <translation>Gegensp. Spannposition</translation>
    </message>
    <message>
        <source>Work Receiver No.(##)</source>
        <translation>Werkstückabnehmer Nr.(##)</translation>
    </message>
    <message>
        <source>Gang Holder</source>
        <translation>Kammhalter</translation>
    </message>
    <message>
        <source>Front Drill Holder</source>
        <translation>Bohrhalter vorn</translation>
    </message>
    <message>
        <source>Back Drill Holder</source>
        <translation>Bohrhalter hinten</translation>
    </message>
    <message>
        <source>Back Spindle</source>
        <translation>Gegenspindel</translation>
    </message>
    <message>
        <source>Back Spindle Extension</source>
        <translation>Gegenspindel-Verlängerung</translation>
    </message>
    <message>
        <source>Back Spindle Support</source>
        <translation>Gegenspindel-Stütze</translation>
    </message>
    <message>
        <source>Holder GTF###</source>
        <translation>Halter GTF###</translation>
    </message>
    <message>
        <source>Holder GDF###</source>
        <translation>Halter GDF###</translation>
    </message>
    <message>
        <source>Front Tool Hldr (4=Std)</source>
        <translation>Wzg.-Halter vorn (4=Std)</translation>
    </message>
    <message>
        <source>Front Tool Holder (8=Std)</source>
        <translation>Werkzeughalter vorn (8=Std)</translation>
    </message>
    <message>
        <source>Opp Tool Holder (101=Std)</source>
        <translation>Gegenüberl. Werkzeughalter (101=Std)</translation>
    </message>
    <message>
        <source>Back Tool Holder (121=Std)</source>
        <translation>Werkzeughalter hinten (121=Std)</translation>
    </message>
    <message>
        <source>Back Spl Type (201=Std)</source>
        <translation>Gegenspindeltyp (201=Std)</translation>
    </message>
    <message>
        <source>Back Spl Type (141=Std)</source>
        <translation>Gegenspindeltyp (141=Std)</translation>
    </message>
    <message>
        <source>Tool Pattern 1</source>
        <translation>Werkzeugbestückung 1</translation>
    </message>
    <message>
        <source>Tool Pattern 2</source>
        <translation>Werkzeugbestückung 2</translation>
    </message>
    <message>
        <source>Pair Tool (##)</source>
        <translation>Paarwerkzeug (##)</translation>
    </message>
    <message>
        <source>Back Work Position</source>
        <translation>Gegenspindel-Arbeitsposition</translation>
    </message>
    <message>
        <source>Tooling Pattern</source>
        <translation>Werkzeugbestückung</translation>
    </message>
    <message>
        <source>Gang Tool Pattern</source>
        <translation>Kammbestückung</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Stütze</translation>
    </message>
    <message>
        <source>With Support</source>
        <translation>Mit Stütze</translation>
    </message>
    <message>
        <source>With Basket</source>
        <translation>Mit Korb</translation>
    </message>
    <message>
        <source>Catch</source>
        <translation>Auffangen</translation>
    </message>
    <message>
        <source>Standard Holder</source>
        <translation>Standardhalter</translation>
    </message>
    <message>
        <source>Free Tool</source>
        <translation>Freies Werkzeug</translation>
    </message>
    <message>
        <extracomment>Data Page: bar loader and miscellaneous settings</extracomment>
        <source>Bar Loader</source>
        <translation>Stangenlader</translation>
    </message>
    <message>
        <source>Magazine</source>
        <translation>Magazin</translation>
    </message>
    <message>
        <source>Hydrostatic</source>
        <translation>Hydrostatisch</translation>
    </message>
    <message>
        <source>Program Type</source>
        <translation>Programmart</translation>
    </message>
    <message>
        <source>Sub Program</source>
        <translation>Unterprogramm</translation>
    </message>
    <message>
        <source>M Code</source>
        <translation>M-Code</translation>
    </message>
    <message>
        <source>Sub Program Number (P)</source>
        <translation>Unterprogrammnummer (P)</translation>
    </message>
    <message>
        <source>Dwell For Bar Loader (s)</source>
        <translation>Verweilzeit Stangenlader (s)</translation>
    </message>
    <message>
        <source>Chamfer Distance X, Z</source>
        <translation>Fasenabstand X, Z</translation>
    </message>
    <message>
        <source>Pull Back Amount</source>
        <translation>Rückzugsweg</translation>
    </message>
    <message>
        <source>Spindle Stop</source>
        <translation>Spindelstopp</translation>
    </message>
    <message>
        <source>NO</source>
        <translation>NEIN</translation>
    </message>
    <message>
        <source>YES</source>
        <translation>JA</translation>
    </message>
    <message>
        <source>Spindle RPM</source>
        <translation>Spindeldrehzahl</translation>
    </message>
    <message>
        <source>Startup Spindle Speed</source>
        <translation>Anfangsdrehzahl Spindel</translation>
    </message>
    <message>
        <source>Polar Interpolation Mode</source>
        <translation>Polarkoordinaten-Interpolation</translation>
    </message>
    <message>
        <source>X and C</source>
        <translation>X und C</translation>
    </message>
    <message>
        <source>X and Y</source>
        <translation>X und Y</translation>
    </message>
    <message>
        <source>Cut Off Tool Breakage Detection By Spindle</source>
        <translation>Bruchkontrolle Abstechwerkzeug über Spindel</translation>
    </message>
    <message>
        <extracomment>Data Page: stock definition</extracomment>
        <source>Stock Definition</source>
        <translation>Rohteildefinition</translation>
    </message>
    <message>
        <source>Stock Type</source>
        <translation>Rohteilart</translation>
    </message>
    <message>
        <source>Z Facing Amount</source>
        <translation>Planaufmaß Z</translation>
    </message>
    <message>
        <source>Stock Length</source>
        <translation>Rohteillänge</translation>
    </message>
    <message>
        <source>Part Length</source>
        <translation>Teillänge</translation>
    </message>
    <message>
        <source>Stock Diameter</source>
        <translation>Rohteildurchmesser</translation>
    </message>
    <message>
        <source>Inside Diameter</source>
        <translation>Innendurchmesser</translation>
    </message>
    <message>
        <source>Diameter</source>
        <translation>Durchmesser</translation>
    </message>
    <message>
        <source>Base Angle</source>
        <translation>Basiswinkel</translation>
    </message>
    <message>
        <source>Sides</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Select Feature for Stock Profile</source>
        <translation>Feature für Rohteilprofil wählen</translation>
    </message>
    <message>
        <source>Bar</source>
        <translation>Stange</translation>
    </message>
    <message>
        <source>Tube</source>
        <translation>Rohr</translation>
    </message>
    <message>
        <source>Polygon</source>
        <translation>Mehrkant</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>OD</source>
        <translation>AD</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>Select a feature for the Stock Profile</source>
        <translation>Bitte ein Feature für das Rohteilprofil wählen</translation>
    </message>
    <message>
        <extracomment>Auto Sync</extracomment>
        <source>Auto Sync - Operation Order</source>
        <translation>Auto-Sync - Arbeitsgangreihenfolge</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Auto Sync is only supported for L series machines at this time.</source>
        <translation>Auto-Sync wird derzeit nur für Maschinen der L-Serie unterstützt.</translation>
    </message>
    <message>
        <extracomment>The Feldra host window</extracomment>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Geometry</source>
        <translation>Geometrie</translation>
    </message>
    <message>
        <source>Features</source>
        <translation>Features</translation>
    </message>
    <message>
        <source>Operations</source>
        <translation>Operationen</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>Öffnen...</translation>
    </message>
    <message>
        <source>New from Template...</source>
        <translation>Neu aus Vorlage...</translation>
    </message>
    <message>
        <source>Open Template...</source>
        <translation>Vorlage öffnen...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>English</source>
        <translation>Englisch</translation>
    </message>
    <message>
        <source>German</source>
        <translation>Deutsch</translation>
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
        <source>Turret Setup</source>
        <translation>Revolver einrichten</translation>
    </message>
    <message>
        <source>Simulate</source>
        <translation>Simulieren</translation>
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
        <source>Undo %1</source>
        <translation>Rückgängig: %1</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>Wiederholen: %1</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>As opened</source>
        <translation>Wie geöffnet</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>New Document</source>
        <translation>Neues Dokument</translation>
    </message>
    <message>
        <source>Open Template</source>
        <translation>Vorlage öffnen</translation>
    </message>
    <message>
        <source>Edit Technology</source>
        <translation>Technologie bearbeiten</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Änderung</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Macro</source>
        <translation>Makro</translation>
    </message>
    <message>
        <source>Generate NC Code</source>
        <translation>NC-Code erzeugen</translation>
    </message>
    <message>
        <source>Help Topics</source>
        <translation>Hilfethemen</translation>
    </message>
    <message>
        <source>About Feldra</source>
        <translation>Über Feldra</translation>
    </message>
    <message>
        <source>Feldra: CAM for Swiss-type lathes, with its add-ins.</source>
        <translation>Feldra: CAM für Langdrehautomaten, mit seinen Add-Ins.</translation>
    </message>
    <message>
        <source>Simulation</source>
        <translation>Simulation</translation>
    </message>
    <message>
        <source>NC Code</source>
        <translation>NC-Code</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Item</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Synchronisations</source>
        <translation>Synchronisationen</translation>
    </message>
    <message>
        <source>Work Planes</source>
        <translation>Arbeitsebenen</translation>
    </message>
    <message>
        <source>active</source>
        <translation>aktiv</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>Operation</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>NC code generation was cancelled.</source>
        <translation>Die NC-Code-Erzeugung wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Feldra Help</source>
        <translation>Feldra-Hilfe</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Startseite</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Index</source>
        <translation>Index</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>The help file %1 cannot be found.</source>
        <translation>Die Hilfedatei %1 wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>%1 is not a compiled help file.</source>
        <translation>%1 ist keine kompilierte Hilfedatei.</translation>
    </message>
    <message>
        <source>The help file %1 cannot be opened: %2</source>
        <translation>Die Hilfedatei %1 kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>The topic %1 is not in the help file %2. Its start page is shown.</source>
        <translation>Das Thema %1 steht nicht in der Hilfedatei %2. Ihre Startseite wird angezeigt.</translation>
    </message>
    <message>
        <source>The place %1 is not on the page %2.</source>
        <translation>Die Stelle %1 steht nicht auf der Seite %2.</translation>
    </message>
    <message>
        <source>Pick an Object</source>
        <translation>Objekt auswählen</translation>
    </message>
    <message>
        <extracomment>The Feldra host window: unsaved changes, the document view and the simulation</extracomment>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>The document &quot;%1&quot; has changes. Save them?</source>
        <translation>Das Dokument „%1“ hat Änderungen. Speichern?</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Speichern unter...</translation>
    </message>
    <message>
        <source>Machine Setup Name</source>
        <translation>Name der Maschineneinrichtung</translation>
    </message>
    <message>
        <source>Machine Code</source>
        <translation>Maschinencode</translation>
    </message>
    <message>
        <source>Maker Tag</source>
        <translation>Herstellerkennung</translation>
    </message>
    <message>
        <source>Stock Inside Diameter</source>
        <translation>Innendurchmesser Rohteil</translation>
    </message>
    <message>
        <source>Stock Front Z</source>
        <translation>Rohteilanfang Z</translation>
    </message>
    <message>
        <source>(not set)</source>
        <translation>(nicht gesetzt)</translation>
    </message>
    <message>
        <source>Face Amount</source>
        <translation>Planzugabe</translation>
    </message>
    <message>
        <source>Bar Loader Dwell (s)</source>
        <translation>Stangenlader: Verweilzeit (s)</translation>
    </message>
    <message>
        <source>Bar Loader Type</source>
        <translation>Stangenladertyp</translation>
    </message>
    <message>
        <source>Bar Loader Sub Program</source>
        <translation>Unterprogramm Stangenlader</translation>
    </message>
    <message>
        <source>Bar Loader Command</source>
        <translation>Befehl Stangenlader</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Turret</source>
        <translation>Revolver</translation>
    </message>
    <message>
        <source>Station</source>
        <translation>Station</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Technology</source>
        <translation>Technologie</translation>
    </message>
    <message>
        <source>(missing)</source>
        <translation>(fehlt)</translation>
    </message>
    <message>
        <source>(no type)</source>
        <translation>(kein Typ)</translation>
    </message>
    <message>
        <source>Stocks</source>
        <translation>Rohteile</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>swept profile</source>
        <translation>gezogenes Profil</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Anfang</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Cross-section</source>
        <translation>Querschnitt</translation>
    </message>
    <message>
        <source>to</source>
        <translation>nach</translation>
    </message>
    <message>
        <source>no change</source>
        <translation>keine Änderung</translation>
    </message>
    <message>
        <source>Back Spindle Axes</source>
        <translation>Achsen der Gegenspindel</translation>
    </message>
    <message>
        <source>No &quot;Main Stock&quot;.</source>
        <translation>Kein „Main Stock“.</translation>
    </message>
    <message>
        <source>no tool (opening value)</source>
        <translation>keinem Werkzeug (Anfangswert)</translation>
    </message>
    <message>
        <source>Mode %1 of the part (kept)</source>
        <translation>Modus %1 des Teils (beibehalten)</translation>
    </message>
    <message>
        <source>The machine setup folder "%1" cannot be created.</source>
        <translation>Der Ordner der Maschineneinrichtungen „%1“ kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>"%1" is not a folder.</source>
        <translation>„%1“ ist kein Ordner.</translation>
    </message>
    <message>
        <source>The machine setup folder "%1" cannot be read.</source>
        <translation>Der Ordner der Maschineneinrichtungen „%1“ kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The machine setup file "%1" cannot be loaded; the part keeps its setup.</source>
        <translation>Die Maschineneinrichtungsdatei „%1“ kann nicht geladen werden; das Teil behält seine Einrichtung.</translation>
    </message>
    <message>
        <source>Please choose an entry of the list</source>
        <translation>Bitte einen Eintrag der Liste wählen</translation>
    </message>
    <message>
        <source>The part is written, but the settings file "%1" cannot be written: the next new part will not start from these values.</source>
        <translation>Das Teil ist geschrieben, aber die Einstellungsdatei „%1“ kann nicht geschrieben werden: Das nächste neue Teil beginnt nicht mit diesen Werten.</translation>
    </message>
    <message>
        <source>This value is computed from the stock. The machine takes a bar stock O.D. from 0 to %1.</source>
        <translation>Dieser Wert ist aus dem Rohteil berechnet. Die Maschine nimmt einen Stangen-Außendurchmesser von 0 bis %1.</translation>
    </message>
    <message>
        <source>Write it anyway?</source>
        <translation>Trotzdem schreiben?</translation>
    </message>
    <message>
        <source>Beyond the machine&apos;s bar capacity: it takes a bar stock O.D. from 0 to %1. OK asks before writing this value.</source>
        <translation>Über dem Stangendurchlass der Maschine: Sie nimmt einen Stangen-Außendurchmesser von 0 bis %1. OK fragt, bevor dieser Wert geschrieben wird.</translation>
    </message>
    <message>
        <source>in</source>
        <translation>in</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>in/rev</source>
        <translation>Zoll/U</translation>
    </message>
    <message>
        <source>mm/rev</source>
        <translation>mm/U</translation>
    </message>
    <message>
        <source>rpm</source>
        <translation>U/min</translation>
    </message>
    <message>
        <source>s</source>
        <translation>s</translation>
    </message>
    <message>
        <source>The NC code is written in the part&apos;s unit, %1.</source>
        <translation>Der NC-Code wird in der Einheit des Teils geschrieben, %1.</translation>
    </message>
    <message>
        <source>The NC code&apos;s lengths and feeds are written in %1; the values on this page stay in the part&apos;s unit, %2.</source>
        <translation>Längen und Vorschübe des NC-Codes werden in %1 geschrieben; die Werte auf dieser Seite bleiben in der Einheit des Teils, %2.</translation>
    </message>
    <message>
        <source>Feldra templates (*.fdt)</source>
        <translation>Feldra-Vorlagen (*.fdt)</translation>
    </message>
    <message>
        <source>Feldra documents (*.fdoc)</source>
        <translation>Feldra-Dokumente (*.fdoc)</translation>
    </message>
    <message>
        <source>Show details (host calls)</source>
        <translation>Details zeigen (Aufrufe des Hosts)</translation>
    </message>
    <message>
        <extracomment>The NC listing: its headings, keys and notes (the machine code stays)</extracomment>
        <source>HEAD %1 OF %2</source>
        <translation>KANAL %1 VON %2</translation>
    </message>
    <message>
        <source>MACHINE (NO NC HEADS)</source>
        <translation>MASCHINE (KEINE NC-KANÄLE)</translation>
    </message>
    <message>
        <source>PROGRAM %1 %2</source>
        <translation>PROGRAMM %1 %2</translation>
    </message>
    <message>
        <source>COMMENT %1</source>
        <translation>KOMMENTAR %1</translation>
    </message>
    <message>
        <source>OUTPUT UNIT %1</source>
        <translation>AUSGABEEINHEIT %1</translation>
    </message>
    <message>
        <source>DOCUMENT UNIT %1</source>
        <translation>DOKUMENTEINHEIT %1</translation>
    </message>
    <message>
        <source>INCH</source>
        <translation>ZOLL</translation>
    </message>
    <message>
        <source>METRIC</source>
        <translation>METRISCH</translation>
    </message>
    <message>
        <source>UNKNOWN %1</source>
        <translation>UNBEKANNT %1</translation>
    </message>
    <message>
        <source>NUMBERS IN INCHES (LENGTHS), DEGREES, RPM AND SECONDS</source>
        <translation>ZAHLEN IN ZOLL (LÄNGEN), GRAD, 1/MIN UND SEKUNDEN</translation>
    </message>
    <message>
        <source>NUMBERS IN MILLIMETRES (LENGTHS), DEGREES, RPM AND SECONDS</source>
        <translation>ZAHLEN IN MILLIMETER (LÄNGEN), GRAD, 1/MIN UND SEKUNDEN</translation>
    </message>
    <message>
        <source>NUMBERS IN THE DOCUMENT'S UNIT %1 (LENGTHS), DEGREES, RPM AND SECONDS</source>
        <translation>ZAHLEN IN DER EINHEIT %1 DES DOKUMENTS (LÄNGEN), GRAD, 1/MIN UND SEKUNDEN</translation>
    </message>
    <message>
        <source>FORWARD</source>
        <translation>VORWÄRTS</translation>
    </message>
    <message>
        <source>NONE</source>
        <translation>KEINE</translation>
    </message>
    <message>
        <source>REVERSE</source>
        <translation>RÜCKWÄRTS</translation>
    </message>
    <message>
        <source>HYDROSTATIC</source>
        <translation>HYDROSTATISCH</translation>
    </message>
    <message>
        <source>MAGAZINE, SUB PROGRAM</source>
        <translation>MAGAZIN, UNTERPROGRAMM</translation>
    </message>
    <message>
        <source>MAGAZINE, M CODE</source>
        <translation>MAGAZIN, M-CODE</translation>
    </message>
    <message>
        <source>UNKNOWN</source>
        <translation>UNBEKANNT</translation>
    </message>
    <message>
        <source>DATA PAGE</source>
        <translation>DATENBLATT</translation>
    </message>
    <message>
        <source>(NOT SET)</source>
        <translation>(NICHT GESETZT)</translation>
    </message>
    <message>
        <source>(NONE)</source>
        <translation>(KEINE)</translation>
    </message>
    <message>
        <source>TOOLS</source>
        <translation>WERKZEUGE</translation>
    </message>
    <message>
        <source>T%1 ID=%2 X=%3 Y=%4 Z=%5 SPINDLE=%6 GEAR=%7 HOLDER=%8 TURRET=%9 STATION=%10 UNIT=%11 COMMENT=%12</source>
        <translation>T%1 ID=%2 X=%3 Y=%4 Z=%5 SPINDEL=%6 ÜBERSETZUNG=%7 HALTER=%8 REVOLVER=%9 STATION=%10 EINHEIT=%11 KOMMENTAR=%12</translation>
    </message>
    <message>
        <source>OPERATIONS</source>
        <translation>ARBEITSGÄNGE</translation>
    </message>
    <message>
        <source>OP %1 %2 TYPE=%3</source>
        <translation>AG %1 %2 TECHNOLOGIE=%3</translation>
    </message>
    <message>
        <source>TOOL=%1 ID=%2</source>
        <translation>WERKZEUG=%1 ID=%2</translation>
    </message>
    <message>
        <source>TOOL=NONE</source>
        <translation>WERKZEUG=KEINS</translation>
    </message>
    <message>
        <source>HEAD=%1</source>
        <translation>KANAL=%1</translation>
    </message>
    <message>
        <source>SUPPRESSED</source>
        <translation>UNTERDRÜCKT</translation>
    </message>
    <message>
        <source>SYNCS</source>
        <translation>SYNCHRONISATIONEN</translation>
    </message>
    <message>
        <source>NO NODES</source>
        <translation>KEINE KNOTEN</translation>
    </message>
    <message>
        <source>SYNC %1 #%2 %3 WITH %4</source>
        <translation>SYNC %1 #%2 %3 MIT %4</translation>
    </message>
    <message>
        <source>NO OTHER NODE</source>
        <translation>KEIN ANDERER KNOTEN</translation>
    </message>
    <message>
        <source>NO OPERATION</source>
        <translation>KEIN ARBEITSGANG</translation>
    </message>
    <message>
        <source>OP %1 %2</source>
        <translation>AG %1 %2</translation>
    </message>
    <message>
        <source>OP (MISSING ID %1)</source>
        <translation>AG (FEHLENDE ID %1)</translation>
    </message>
    <message>
        <source>(NO TYPE)</source>
        <translation>(KEIN TYP)</translation>
    </message>
</context>
</TS>
