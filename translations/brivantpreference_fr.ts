<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>FieldType</name>
    <message>
        <source>(empty)</source>
        <translation>(vide)</translation>
    </message>
    <message>
        <source>on</source>
        <translation>activé</translation>
    </message>
    <message>
        <source>off</source>
        <translation>désactivé</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(aucun)</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1 (non installé)</translation>
    </message>
</context>
<context>
    <name>FolderEdit</name>
    <message>
        <source>Browse...</source>
        <translation>Parcourir...</translation>
    </message>
</context>
<context>
    <name>PL_FileSlot</name>
    <message>
        <source>It is no regular file.</source>
        <translation>Ce n’est pas un fichier ordinaire.</translation>
    </message>
    <message>
        <source>The file would be too large to be read.</source>
        <translation>Le fichier serait trop grand pour être lu.</translation>
    </message>
    <message>
        <source>Another program changed the file.</source>
        <translation>Un autre programme a modifié le fichier.</translation>
    </message>
    <message>
        <source>The backup cannot be written.</source>
        <translation>La copie de sauvegarde ne peut pas être écrite.</translation>
    </message>
    <message>
        <source>The new file cannot be put in the place of the old one.</source>
        <translation>Le nouveau fichier ne peut pas prendre la place de l’ancien.</translation>
    </message>
</context>
<context>
    <name>PL_InputFile</name>
    <message>
        <source>is not a regular file</source>
        <translation>n’est pas un fichier ordinaire</translation>
    </message>
    <message>
        <source>is larger than %1 MB</source>
        <translation>dépasse %1 Mo</translation>
    </message>
</context>
<context>
    <name>PR_PrefItem</name>
    <message>
        <source>Internal</source>
        <translation>Interne</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Toutes</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Drawing Mode</source>
        <translation>Mode dessin</translation>
    </message>
    <message>
        <source>Sceneplanning</source>
        <translation>Planification de scène</translation>
    </message>
    <message>
        <source>Node View</source>
        <translation>Vue des nœuds</translation>
    </message>
    <message>
        <source>Exposure Sheet</source>
        <translation>Feuille d’exposition</translation>
    </message>
    <message>
        <source>Color Management</source>
        <translation>Gestion des couleurs</translation>
    </message>
    <message>
        <source>Highlighting</source>
        <translation>Mise en évidence</translation>
    </message>
    <message>
        <source>Element Manager</source>
        <translation>Gestionnaire d’éléments</translation>
    </message>
    <message>
        <source>Function Editor</source>
        <translation>Éditeur de fonctions</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Playback View</source>
        <translation>Vue de lecture</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>Ligne de temps</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Son</translation>
    </message>
    <message>
        <source>Tree View</source>
        <translation>Vue arborescente</translation>
    </message>
    <message>
        <source>Render View</source>
        <translation>Vue de rendu</translation>
    </message>
    <message>
        <source>Scanning</source>
        <translation>Numérisation</translation>
    </message>
    <message>
        <source>Render</source>
        <translation>Rendu</translation>
    </message>
    <message>
        <source>No short description available</source>
        <translation>Aucune description courte disponible</translation>
    </message>
    <message>
        <source>No long description available</source>
        <translation>Aucune description détaillée disponible</translation>
    </message>
    <message>
        <source>This preference has been locked at the facility-wide level.
 Please see your system administrator for details.</source>
        <translation>Cette préférence a été verrouillée pour l’ensemble du studio.
Pour plus de détails, adressez-vous à votre administrateur système.</translation>
    </message>
</context>
<context>
    <name>PR_Preference</name>
    <message>
        <source>Unable to open preference file (%1)</source>
        <extracomment>While reading. %1 is a path, here and in all messages below.</extracomment>
        <translation>Impossible d’ouvrir le fichier de préférences (%1)</translation>
    </message>
    <message>
        <source>Unable to parse prefereces file (%1)</source>
        <translation>Impossible d’analyser le fichier de préférences (%1)</translation>
    </message>
    <message>
        <source>TUPreference::load: No preference file specified</source>
        <translation>TUPreference::load&#xa0;: aucun fichier de préférences n’est indiqué</translation>
    </message>
    <message>
        <source>Preference file not found: %1</source>
        <translation>Fichier de préférences introuvable&#xa0;: %1</translation>
    </message>
    <message>
        <source>Default preference file not found: %1 </source>
        <translation>Fichier des préférences par défaut introuvable&#xa0;: %1 </translation>
    </message>
    <message>
        <source>Preference file %1 is empty or corrupted.
Backup preference file has been restored.</source>
        <translation>Le fichier de préférences %1 est vide ou endommagé.
Sa copie de sauvegarde a été restaurée.</translation>
    </message>
    <message>
        <source>Preference file %1 is empty or corrupted.
Default preferences will be loaded instead.</source>
        <translation>Le fichier de préférences %1 est vide ou endommagé.
Les préférences par défaut vont être chargées à la place.</translation>
    </message>
    <message>
        <source>Unable to open preference file: %1</source>
        <extracomment>While saving.</extracomment>
        <translation>Impossible d’ouvrir le fichier de préférences&#xa0;: %1</translation>
    </message>
    <message>
        <source>Error while writing preference file: %1</source>
        <translation>Erreur lors de l’écriture du fichier de préférences&#xa0;: %1</translation>
    </message>
    <message>
        <source>Could not initialize preferences.</source>
        <translation>Impossible d’initialiser les préférences.</translation>
    </message>
    <message>
        <source>The store has no preference file.</source>
        <translation>Aucun fichier n’est prévu pour ces préférences.</translation>
    </message>
    <message>
        <source>Preference file %1 is empty or corrupted.
Its backup has been read instead.</source>
        <translation>Le fichier de préférences %1 est vide ou endommagé.
Sa copie de sauvegarde a été lue à la place.</translation>
    </message>
    <message>
        <source>Left out, as XML cannot hold their keys: %1</source>
        <translation>Omises, car XML ne peut pas contenir leurs clés&#xa0;: %1</translation>
    </message>
    <message>
        <source>Left out, as no load would take it: an element with too many attributes or too deeply nested.</source>
        <translation>Omis, car aucun chargement ne l’accepterait&#xa0;: un élément qui a trop d’attributs ou qui est imbriqué trop profondément.</translation>
    </message>
    <message>
        <source>The store is being loaded.</source>
        <translation>Les préférences sont en cours de chargement.</translation>
    </message>
    <message>
        <source>Saved without a lock on the file.</source>
        <translation>Enregistré sans verrou sur le fichier.</translation>
    </message>
</context>
<context>
    <name>PR_PreferenceDialog</name>
    <message>
        <source>Chan&amp;ged</source>
        <translation>Modifi&amp;és</translation>
    </message>
    <message>
        <source>&amp;Locked</source>
        <translation>&amp;Verrouillés</translation>
    </message>
    <message>
        <source>No preference matches.</source>
        <translation>Aucune préférence ne correspond.</translation>
    </message>
    <message>
        <source>Close &amp;Without Saving</source>
        <translation>Fermer &amp;sans enregistrer</translation>
    </message>
    <message>
        <source>&amp;Restore All...</source>
        <translation>&amp;Tout rétablir...</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>The preferences could not be saved in %1: %2
They stay in effect until the program ends; the file is as it was before.</source>
        <translation>Les préférences n’ont pas pu être enregistrées dans %1 : %2
Elles restent en vigueur jusqu’à la fin du programme ; le fichier est tel qu’il était.</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Raccourcis</translation>
    </message>
    <message>
        <source>Search all pages</source>
        <translation>Chercher partout</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Chercher</translation>
    </message>
    <message>
        <source>&amp;Find by key:</source>
        <translation>Chercher par &amp;touche :</translation>
    </message>
    <message>
        <source>Press a key to see what it does; Backspace shows all.</source>
        <translation>Appuyez sur une touche pour voir ce qu’elle fait ; Retour arrière montre tout.</translation>
    </message>
    <message>
        <source>&amp;Dismiss</source>
        <translation>&amp;Ignorer</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Refaire</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>Restore the defaults of all preferences.</source>
        <translation>Rétablit toutes les valeurs par défaut.</translation>
    </message>
    <message numerus="yes">
        <source>Restore the defaults of all %n changed preference(s), on every page?</source>
        <translation>
            <numerusform>Rétablir la valeur par défaut de %n préférence modifiée, sur toutes les pages ?</numerusform>
            <numerusform>Rétablir les valeurs par défaut des %n préférences modifiées, sur toutes les pages ?</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>Restore All</source>
        <translation>Tout rétablir</translation>
    </message>
</context>
<context>
    <name>PR_XmlReader</name>
    <message>
        <source>A document type stands inside of the root or behind it.</source>
        <translation>Un type de document se trouve à l’intérieur de la racine ou après elle.</translation>
    </message>
    <message>
        <source>Elements are nested more than %1 deep.</source>
        <translation>Des éléments sont imbriqués sur plus de %1 niveaux.</translation>
    </message>
    <message>
        <source>The element has more than %1 attributes.</source>
        <translation>L’élément a plus de %1 attributs.</translation>
    </message>
    <message>
        <source>Entities bring too many elements.</source>
        <translation>Les entités apportent trop d’éléments.</translation>
    </message>
    <message>
        <source>Entities multiply the text.</source>
        <translation>Les entités multiplient le texte.</translation>
    </message>
    <message>
        <source>The encoding &quot;%1&quot; is not known.</source>
        <translation>L’encodage «&#xa0;%1&#xa0;» est inconnu.</translation>
    </message>
    <message>
        <source>The text is not in the encoding &quot;%1&quot;.</source>
        <translation>Le texte n’est pas dans l’encodage «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>There are more than %1 elements.</source>
        <translation>Il y a plus de %1 éléments.</translation>
    </message>
    <message>
        <source>The document type of the file&apos;s own is larger than %1 KB.</source>
        <translation>Le type de document propre au fichier dépasse %1 Ko.</translation>
    </message>
</context>
<context>
    <name>PreferenceRow</name>
    <message>
        <source>Restore %1</source>
        <translation>Rétablir %1</translation>
    </message>
    <message>
        <source>Change %1</source>
        <translation>Modifier %1</translation>
    </message>
    <message>
        <source>Restore the default of %1</source>
        <translation>Rétablir la valeur par défaut de %1</translation>
    </message>
    <message>
        <source>Locked by the facility for everybody.</source>
        <translation>Verrouillé par le studio pour tout le monde.</translation>
    </message>
    <message>
        <source>The default of the facility is %1.</source>
        <translation>La valeur par défaut du studio est %1.</translation>
    </message>
    <message>
        <source>The default of the set %1 is %2.</source>
        <translation>La valeur par défaut du jeu %1 est %2.</translation>
    </message>
    <message>
        <source>The default is %1.</source>
        <translation>La valeur par défaut est %1.</translation>
    </message>
    <message>
        <source>Changed by you.</source>
        <translation>Modifié par vous.</translation>
    </message>
    <message>
        <source>Not changed.</source>
        <translation>Non modifié.</translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2 too.</source>
        <translation>%1 est aussi le raccourci de %2.</translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2.</source>
        <translation>%1 est le raccourci de %2.</translation>
    </message>
    <message>
        <source>%1 is the shortcut of %2, which the facility has locked.</source>
        <translation>%1 est le raccourci de %2, que le studio a verrouillé.</translation>
    </message>
    <message>
        <source>Take It From %1</source>
        <translation>Le prendre à %1</translation>
    </message>
    <message>
        <source>%1 alone would act whenever it is typed outside of a text.</source>
        <translation>%1 seul agirait à chaque frappe hors d’un texte.</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>Utiliser %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
</TS>
