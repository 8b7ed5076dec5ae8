-- What a new catalogue offers: the usual genres and some departments.

INSERT INTO tZanr (ZNAME) VALUES
    ('Akční'), ('Animovaný'), ('Dobrodružný'), ('Dokumentární'), ('Drama'), ('Erotický'), ('Fantasy'),
    ('Historický'), ('Horor'), ('Hudební'), ('Katastrofický'), ('Komedie'), ('Krimi'), ('Muzikál'),
    ('Mysteriózní'), ('Pohádka'), ('Psychologický'), ('Rodinný'), ('Romantický'), ('Sci-fi'), ('Sportovní'),
    ('Thriller'), ('Válečný'), ('Western'), ('Životopisný');

INSERT INTO tOddeleni (OdJm) VALUES
    ('Hrané filmy'), ('Dětské filmy'), ('Seriály'), ('Dokumenty'), ('Koncerty a hudba');
