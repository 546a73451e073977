<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>Vitesse :</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>Données :</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Durée de connexion :</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Envoyé :</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Reçu :</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>Transfert</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>(mobile)</translation>
    </message>
    <message>
        <source>IDS_WLAN_TRANSFER</source>
        <translation>(Wi-Fi)</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>Envoi</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>Réception</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>Statistiques</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>Dernière remise à zéro :</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>Ce mois-ci</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>Cette année</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>Ces chiffres sont des estimations ; la facture de votre opérateur fait foi.</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>Remettre les statistiques à zéro</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>Tout développer</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>Tout réduire</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>Confirmer</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>Remettre à zéro toutes les statistiques enregistrées ? C’est irréversible.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>Non</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>Consommation de données</translation>
    </message>
    <message>
        <source>IDS_UNIT_B</source>
        <translation>o</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>Ko</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>Mo</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>To</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>o/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>Ko/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>Mo/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>Go/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_TBPS</source>
        <translation>To/s</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>Données utilisées :</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>Temps utilisé :</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>Ces chiffres sont des estimations ; la facture de votre opérateur fait foi.</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>Remettre à zéro</translation>
    </message>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>Fixer une limite…</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>heures</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>Votre volume de données pour cette période est presque épuisé.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>Votre volume de données pour cette période est épuisé.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>Votre temps de connexion pour cette période est presque épuisé.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>Votre temps de connexion pour cette période est épuisé.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>Alerte de consommation</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_DISCONNECT_BUTTON</source>
        <translation>Se déconnecter</translation>
    </message>
    <message>
        <source>IDS_SAVESETTING</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>IDS_CLEAR_BUTTON</source>
        <translation>Effacer l’historique</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>Périodicité</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>Quotidienne</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>Hebdomadaire</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>Mensuelle</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>lun.</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>mar.</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>mer.</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>jeu.</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>ven.</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>sam.</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>dim.</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>Limite</translation>
    </message>
    <message>
        <source>IDS_UNIT_DATA_VOLUME_MB</source>
        <translation>Mo</translation>
    </message>
    <message>
        <source>IDS_SAVE_FAILED</source>
        <translation>Les réglages n’ont pas pu être enregistrés.</translation>
    </message>
    <message>
        <source>IDS_CHANGED_SAVE</source>
        <translation>Les réglages ont été enregistrés.</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>Vitesse en </translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>Vitesse d’envoi</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>Vitesse de réception</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>Période</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>Alertes</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>La consommation est mesurée sur cet ordinateur. Votre opérateur peut compter autrement.</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>Début :</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>Périodique</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>Données</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>Temps</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>Avertir avant d’atteindre une limite</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>Avertir en cas de dépassement d’une limite</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>Veuillez indiquer la limite de données.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>Veuillez indiquer la limite de temps.</translation>
    </message>
</context>
<context>
    <name>skylet</name>
    <message>
        <source>HOST_TITLE</source>
        <translation>Skylet</translation>
    </message>
    <message>
        <source>HOST_MENU_FILE</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>HOST_MENU_VIEW</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>HOST_MENU_LANGUAGE</source>
        <translation>&amp;Langue</translation>
    </message>
    <message>
        <source>HOST_QUIT</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>HOST_SETTINGS</source>
        <translation>&amp;Paramètres…</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_TITLE</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_PAGES</source>
        <translation>Pages de paramètres</translation>
    </message>
    <message>
        <source>HOST_OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>HOST_CANCEL</source>
        <translation>A&amp;nnuler</translation>
    </message>
    <message>
        <source>HOST_MENU_DEVICE</source>
        <translation>&amp;Périphérique</translation>
    </message>
    <message>
        <source>HOST_DEVICE_AUTOMATIC</source>
        <translation>&amp;Automatique</translation>
    </message>
    <message>
        <source>HOST_DEVICE_ABSENT</source>
        <translation>%1 (absent)</translation>
    </message>
    <message>
        <source>HOST_DEVICE_REFUSED</source>
        <translation>Le périphérique ne peut pas être choisi maintenant : un autre programme compte.</translation>
    </message>
    <message>
        <source>HOST_CONNECT</source>
        <translation>Se &amp;connecter</translation>
    </message>
    <message>
        <source>HOST_CONNECTING</source>
        <translation>Connexion en cours…</translation>
    </message>
    <message>
        <source>HOST_CONNECT_FAILED</source>
        <translation>La connexion n’a pas pu être établie : NetworkManager a signalé une erreur ou n’a pas répondu à temps.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_DEVICE</source>
        <translation>Aucun périphérique ne peut se connecter.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_SERVICE</source>
        <translation>La connexion ne peut pas être établie : NetworkManager n’est pas lancé.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NOT_MANAGED</source>
        <translation>La connexion ne peut pas être établie : NetworkManager ne gère pas ce périphérique.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_REFUSED</source>
        <translation>La connexion ne peut pas être établie : vous n’y êtes pas autorisé.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_PROFILE</source>
        <translation>La connexion ne peut pas être établie : NetworkManager n’a aucune connexion configurée pour ce périphérique.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT</source>
        <translation>Se &amp;déconnecter</translation>
    </message>
    <message>
        <source>HOST_DISCONNECTING</source>
        <translation>Déconnexion en cours…</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_DONE</source>
        <translation>La connexion a été coupée.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_CONNECTION</source>
        <translation>Il n’y a pas de connexion à couper.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_SERVICE</source>
        <translation>La connexion ne peut pas être coupée : NetworkManager n’est pas lancé.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NOT_MANAGED</source>
        <translation>La connexion ne peut pas être coupée : NetworkManager ne la gère pas.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_REFUSED</source>
        <translation>La connexion ne peut pas être coupée : vous n’en avez pas l’autorisation.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_FAILED</source>
        <translation>La connexion n’a pas pu être coupée : NetworkManager a signalé une erreur ou n’a pas répondu.</translation>
    </message>
    <message>
        <source>HOST_VIEW_USAGE</source>
        <translation>&amp;Consommation</translation>
    </message>
    <message>
        <source>HOST_VIEW_STATISTICS</source>
        <translation>&amp;Statistiques</translation>
    </message>
    <message>
        <source>HOST_VIEWS</source>
        <translation>Vues</translation>
    </message>
    <message>
        <source>HOST_PAGE</source>
        <translation>Page du module</translation>
    </message>
    <message>
        <source>HOST_MESSAGES</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>HOST_DISMISS</source>
        <translation>F&amp;ermer</translation>
    </message>
    <message>
        <source>HOST_INTERFACE</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>HOST_CONNECTION</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>HOST_STORE</source>
        <translation>Stockage</translation>
    </message>
    <message>
        <source>HOST_NO_INTERFACE</source>
        <translation>Aucune interface</translation>
    </message>
    <message>
        <source>HOST_CONNECTED</source>
        <translation>Connecté</translation>
    </message>
    <message>
        <source>HOST_NOT_CONNECTED</source>
        <translation>Non connecté</translation>
    </message>
    <message>
        <source>HOST_DEMO</source>
        <translation>Démonstration</translation>
    </message>
    <message>
        <source>HOST_NO_PLUGIN</source>
        <translation>Aucun module n’est chargé ; il n’y a rien à afficher.</translation>
    </message>
    <message>
        <source>HOST_NO_DATA_FOLDER</source>
        <translation>Le dossier de données %1 ne peut pas être créé ; rien n’est mémorisé.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FAILURE</source>
        <translation>Module %1 : %2</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_FOLDER</source>
        <translation>Ce dossier n’existe pas.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOLDER_EMPTY</source>
        <translation>Le dossier ne contient aucun module.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_LIBRARY</source>
        <translation>Le dossier ne contient aucune bibliothèque.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_LOADED</source>
        <translation>Chargement impossible : %1</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOREIGN</source>
        <translation>Ce n’est pas un module de ce programme.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_READABLE</source>
        <translation>Le fichier est vide ou illisible.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_WRONG_QT</source>
        <translation>Il a été compilé pour Qt %1, mais ce programme utilise Qt %2.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_TWICE</source>
        <translation>Son identifiant appartient déjà à %1.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_STARTED</source>
        <translation>Il n’a pas démarré.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_STATISTICS</source>
        <translation>Il n’a pas de page de statistiques.</translation>
    </message>
</context>
</TS>
